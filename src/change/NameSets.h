// The names of the steps and layers of a job.
#pragma once

#include "foundation/framework/AsciiText.h"
#include "foundation/framework/CString.h"

#include <set>

class CJOBX;

struct IsBeforeWithoutCase
{
    bool operator()(const CString& a, const CString& b) const { return AsciiCompareNoCase(a.View(), b.View()) < 0; }
};
using NameSet = std::set<CString, IsBeforeWithoutCase>;

// Those of the matrix and those with a folder.
NameSet StepsOf(const CJOBX& job);
NameSet LayersOf(const CJOBX& job);
