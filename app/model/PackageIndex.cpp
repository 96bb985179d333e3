#include "model/PackageIndex.h"

PackageIndex::PackageIndex(const CJOBXdataPkgArray& packages) : m_packages(packages)
{
    for (const CJOBXdataPkg& package : packages.Records())
        if (package.m_nNumber >= 0)
            m_byNumber.try_emplace(package.m_nNumber, &package);
}

const CJOBXdataPkg* PackageIndex::Find(int reference) const
{
    if (const auto found = m_byNumber.find(reference); found != m_byNumber.end())
        return found->second;
    const CJOBXdataPkg* const package = m_packages.GetAt(reference);
    return package != nullptr && package->m_nNumber < 0 ? package : nullptr;
}
