#pragma once

#include "JOBXCLSDLL.h"

#include <unordered_map>

// Finds the package that a component refers to. References count the packages of the file from 0. For packages without
// a number, their position is used.
class PackageIndex
{
public:
    explicit PackageIndex(const CJOBXdataPkgArray& packages);

    // Borrowed; null if there is none.
    const CJOBXdataPkg* Find(int reference) const;

private:
    const CJOBXdataPkgArray& m_packages;
    std::unordered_map<int, const CJOBXdataPkg*> m_byNumber;
};
