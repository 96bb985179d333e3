#pragma once

#include "foundation/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// One drill tool of a drill layer.
// Units:     tolerances and sizes in the unit of the tool list that holds it.
// Ownership: a plain value; copies carry every member.
class JOBX_API CJOBXtoolData : public CRaisingNew
{
public:
    CJOBXtoolData();
    CJOBXtoolData(const CJOBXtoolData& other);
    CJOBXtoolData& operator=(const CJOBXtoolData& other);
    virtual ~CJOBXtoolData();
    virtual CJOBXtoolData* clone() const; // the caller owns the copy

    // All eight members equal: texts case-sensitive, numbers exactly. A tool always equals itself.
    bool operator==(const CJOBXtoolData& other) const;
    bool operator!=(const CJOBXtoolData& other) const;

    // The code of a plating type: 0 for "PLATED", 1 for "NON_PLATED", 2 for "VIA", 0 for any other text; exact.
    static int GetType(const CString& type);
    // The plating type of a code; "" for any code but 0, 1 and 2.
    static CString GetSType(int type);

    // The eight lines of the record, indented. A null file writes nothing.
    void WriteODBData(FILE* file) const;
    // Multiplies both tolerances and both sizes by `factor`.
    void UnitConvert(double factor);

    int m_nNum = 0;
    CString m_sType;  // plating: PLATED, NON_PLATED or VIA
    CString m_sType2; // what the hole is for
    double m_dMinTol = 0.0;
    double m_dMaxTol = 0.0;
    CString m_sBit; // name of the drill bit
    double m_dFinishSize = 0.0;
    double m_dDrillSize = 0.0;
};

extern template class JOBX_API CExPtrArray<CJOBXtoolData*, CJOBXtoolData*>;

// The drill tools of a layer; owns them, copies are deep and leave null entries out. Null entries are passed over.
class JOBX_API CJOBXtoolDataArray : public COwningPtrArray<CJOBXtoolData>
{
public:
    CJOBXtoolDataArray();
    CJOBXtoolDataArray(const CJOBXtoolDataArray& other);
    CJOBXtoolDataArray& operator=(const CJOBXtoolDataArray& other);
    ~CJOBXtoolDataArray() override;
    virtual CJOBXtoolDataArray* clone() const; // the caller owns the copy

    // The same size and equal tools one by one; a missing tool equals only a missing one.
    bool operator==(const CJOBXtoolDataArray& other) const;
    bool operator!=(const CJOBXtoolDataArray& other) const;

    // Each tool's block. A null file writes nothing.
    void WriteODBData(FILE* file) const;
    // Multiplies the tolerances and sizes of every tool by `factor`.
    void UnitConvert(double factor);
    // The number of the first tool that equals the candidate in all but the number: -1 for a null candidate, 0 when no
    // tool matches. A match that is itself numbered 0 cannot be told from none.
    int GetSameToolNum(const CJOBXtoolData* candidate) const;
};
