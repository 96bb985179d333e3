#include "model/PackageIndex.h"

PackageIndex::PackageIndex(const CJOBXdataPkgArray& packages) : m_packages(packages)
{
    for (__int64 i = 0; i < packages.GetSize(); ++i)
        if (const CJOBXdataPkg* const package = packages.GetAt(i); package != nullptr && package->m_nNumber >= 0)
            m_byNumber.try_emplace(package->m_nNumber, package);
}

const CJOBXdataPkg* PackageIndex::Find(int reference) const
{
    if (const auto found = m_byNumber.find(reference); found != m_byNumber.end())
        return found->second;
    const CJOBXdataPkg* const package = m_packages.GetAt(reference);
    return package != nullptr && package->m_nNumber < 0 ? package : nullptr;
}
