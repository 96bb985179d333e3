#pragma once

#include "foundation/CJOBXkeyed.h"
#include "foundation/CJOBXunit.h"
#include "foundation/framework/CRaisingNew.h"
#include "layer/CJOBXtoolData.h"

// The drill tools of a layer and the board's thickness: the file "tools" beside the layer's features. Only complete
// reading reads it; hosts may fill it.
// Units:     thickness, tolerances and sizes in the unit named by the units text; after complete reading in thousandths
//            of its unit, as in the file: mils or microns.
// Ownership: owns its tools; copies are deep.
class JOBX_API CJOBXtool : public CRaisingNew, public CJOBXmeasured, public CJOBXkeyed
{
public:
    CJOBXtool();
    CJOBXtool(const CJOBXtool& other);
    CJOBXtool& operator=(const CJOBXtool& other);
    virtual ~CJOBXtool();

    // Units, thickness, user parameters and tools are exactly equal. An object always equals itself.
    bool operator==(const CJOBXtool& other) const;
    bool operator!=(const CJOBXtool& other) const;

    // Replaces the tools by copies of the given ones; null means none.
    void SetToolDataArray(const CJOBXtoolDataArray* tools);
    // The tools, borrowed, never null.
    CJOBXtoolDataArray* GetToolDataArray() { return &m_arrToolData; }
    const CJOBXtoolDataArray* GetToolDataArray() const { return &m_arrToolData; }

    // Makes or replaces the file "tools" in this folder. If the folder is missing, does nothing.
    void WriteODBData(const CString& directory) const;
    // Multiplies the thickness and the tolerances and sizes of every tool by `factor`; the units text does not change.
    void UnitConvert(double factor);

    // Multiply thickness, tolerances and sizes by this to get millimetres. Only for tools that were read.
    double dGetFactorToMM() const noexcept { return CJOBXmeasured::dGetFactorToMM() / 1000.0; }

    CString m_sUnits;
    double m_dThickness = 0.0; // of the board
    CString m_sUserParams;
    CJOBXtoolDataArray m_arrToolData;
};
