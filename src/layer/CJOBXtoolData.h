#pragma once

#include "foundation/CJOBXidentified.h"
#include "foundation/CJOBXkeyed.h"
#include "foundation/CJOBXsourced.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// One drill tool of a drill layer.
// Units:     tolerances and sizes in the unit of its tool list.
// Ownership: a plain value; copies have every member.
class JOBX_API CJOBXtoolData : public CRaisingNew, public CJOBXkeyed, public CJOBXidentified, public CJOBXsourced
{
public:
    CJOBXtoolData();
    CJOBXtoolData(const CJOBXtoolData& other);
    CJOBXtoolData& operator=(const CJOBXtoolData& other);
    virtual ~CJOBXtoolData();
    virtual CJOBXtoolData* clone() const; // the caller owns the copy

    // All eight members are exactly equal; texts are case-sensitive. A tool always equals itself.
    bool operator==(const CJOBXtoolData& other) const;
    bool operator!=(const CJOBXtoolData& other) const;

    // The code of a plating type: 0 for "PLATED", 1 for "NON_PLATED", 2 for "VIA", 0 for any other text;
    // case-sensitive.
    static int GetType(const CString& type);
    // The plating type of a code; "" for any code except 0, 1 and 2.
    static CString GetSType(int type);

    // Writes the eight lines of the record, indented. Does nothing for a null file.
    void WriteODBData(FILE* file) const;
    // Multiplies both tolerances and both sizes by `factor`.
    void UnitConvert(double factor);

    int m_nNum = 0;
    CString m_sType;  // plating: PLATED, NON_PLATED or VIA
    CString m_sType2; // the purpose of the hole
    double m_dMinTol = 0.0;
    double m_dMaxTol = 0.0;
    CString m_sBit; // name of the drill bit
    double m_dFinishSize = 0.0;
    double m_dDrillSize = 0.0;
};

extern template class JOBX_API CExPtrArray<CJOBXtoolData*, CJOBXtoolData*>;

// The drill tools of a layer; owns them. Copies are deep and without null entries. Null entries are skipped.
class JOBX_API CJOBXtoolDataArray : public COwningPtrArray<CJOBXtoolData>
{
public:
    CJOBXtoolDataArray();
    CJOBXtoolDataArray(const CJOBXtoolDataArray& other);
    CJOBXtoolDataArray& operator=(const CJOBXtoolDataArray& other);
    ~CJOBXtoolDataArray() override;
    virtual CJOBXtoolDataArray* clone() const; // the caller owns the copy

    // The same size and equal tools at each index; null equals only null.
    bool operator==(const CJOBXtoolDataArray& other) const;
    bool operator!=(const CJOBXtoolDataArray& other) const;

    // Writes each tool's block. Does nothing for a null file.
    void WriteODBData(FILE* file) const;
    // Multiplies the tolerances and sizes of every tool by `factor`.
    void UnitConvert(double factor);
    // The number of the first tool that equals the candidate except in its number: -1 for a null candidate, 0 if no
    // tool matches. A match with the number 0 looks the same as no match.
    int GetSameToolNum(const CJOBXtoolData* candidate) const;
};
