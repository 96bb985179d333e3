#pragma once

#include "foundation/CJOBXidentified.h"
#include "foundation/CJOBXkeyed.h"
#include "foundation/CJOBXsourced.h"
#include "foundation/base/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// One row of a job's matrix: a layer. Texts are as in the file, trimmed. Not copyable. The library itself tests only
// for "BOARD" (context), "SIGNAL", "POWER_GROUND" and "DRILL" (type).
class JOBX_API CJOBXmatrixLayer : public CRaisingNew, public CJOBXkeyed, public CJOBXidentified, public CJOBXsourced
{
public:
    CJOBXmatrixLayer();
    CJOBXmatrixLayer(const CJOBXmatrixLayer&) = delete;
    CJOBXmatrixLayer& operator=(const CJOBXmatrixLayer&) = delete;
    virtual ~CJOBXmatrixLayer();

    // Writes an empty line and the block, without a line end after its closing brace. All ten keys are written, even
    // empty ones. Does nothing for a null file.
    void WriteODBData(FILE* file) const;

    CString m_sEndName;   // of a drill's span
    CString m_sStartName; // of a drill's span
    CString m_sPolarity;
    CString m_sName;
    CString m_sType;
    CString m_sContext;
    CString m_sAddType;
    CString m_sOldName;
    CString m_sColor = "0";
    int m_nRow = 0;
};

extern template class JOBX_API CExPtrArray<CJOBXmatrixLayer*, CJOBXmatrixLayer*>;

// The layers of a matrix in file order; owns them. Null entries are skipped.
class JOBX_API CJOBXmatrixLayerArray : public COwningPtrArray<CJOBXmatrixLayer>
{
public:
    CJOBXmatrixLayerArray();
    ~CJOBXmatrixLayerArray() override;

    // Writes each layer's block, followed by a line end. Does nothing for a null file.
    void WriteODBData(FILE* file) const;
    // 1 if a layer of that name, ignoring letter case, has exactly the type "DRILL", else 0. A layer of the same name
    // with another type does not end the search.
    int IsDrillLayer(const CString& name) const;
    // The first layer of that name, ignoring letter case; borrowed, null if there is none.
    CJOBXmatrixLayer* GetMatrixLayer(const CString& name) const;

    // Each sets the value in every layer.
    void SetODBmatrixLayerName(const CString& name);
    void SetODBmatrixLayerPolarity(const CString& polarity);
    void SetODBmatrixLayerType(const CString& type);
    void SetODBmatrixLayerContext(const CString& context);
    // Numbers the rows in order: the layer at index i gets `first` + i.
    void SetODBmatrixLayerRow(int first);
};
