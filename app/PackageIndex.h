#pragma once

#include "JOBXCLSDLL.h"

#include <unordered_map>

// Finds the package that a component refers to. A reference counts the packages of the file from 0; the number that a
// package carries is that count, and where packages carry none their position has to do.
class PackageIndex
{
public:
    explicit PackageIndex(const CJOBXdataPkgArray& packages);

    // Borrowed; null when there is none.
    const CJOBXdataPkg* Find(int reference) const;

private:
    const CJOBXdataPkgArray& m_packages;
    std::unordered_map<int, const CJOBXdataPkg*> m_byNumber;
};
