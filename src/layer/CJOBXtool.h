#pragma once

#include "foundation/framework/CRaisingNew.h"
#include "layer/CJOBXtoolData.h"

// The drill tools of a layer with the board's thickness: the file "tools" beside the layer's features. Never read;
// hosts and the layer fill it.
// Units:     as the units text says; thickness, tolerances and sizes share one unit.
// Ownership: owns its tools; copies are deep.
class JOBX_API CJOBXtool : public CRaisingNew
{
public:
    CJOBXtool();
    CJOBXtool(const CJOBXtool& other);
    CJOBXtool& operator=(const CJOBXtool& other);
    virtual ~CJOBXtool();

    // Units, thickness, user parameters and tools are equal, exactly. An object always equals itself.
    bool operator==(const CJOBXtool& other) const;
    bool operator!=(const CJOBXtool& other) const;

    // Replaces the tools by copies of the given ones; null leaves none.
    void SetToolDataArray(const CJOBXtoolDataArray* tools);
    // The tools themselves, never null; this object keeps them.
    CJOBXtoolDataArray* GetToolDataArray() { return &m_arrToolData; }
    const CJOBXtoolDataArray* GetToolDataArray() const { return &m_arrToolData; }

    // Makes or replaces the file "tools" in this folder. A missing folder is not made, and nothing is written.
    void WriteODBData(const CString& directory) const;
    // Multiplies the thickness and the tolerances and sizes of every tool by `factor`; the units text stays.
    void UnitConvert(double factor);

    CString m_sUnits;
    double m_dThickness = 0.0; // of the board
    CString m_sUserParams;
    CJOBXtoolDataArray m_arrToolData;
};
