#pragma once

#include "foundation/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

#include <cstdio>

// One row of a job's matrix: a layer. Texts stand as the file spells them, trimmed. Not copyable.
// The library itself tests only the words "BOARD" (context), "SIGNAL", "POWER_GROUND" and "DRILL" (type).
class JOBX_API CJOBXmatrixLayer : public CRaisingNew
{
public:
    CJOBXmatrixLayer();
    CJOBXmatrixLayer(const CJOBXmatrixLayer&) = delete;
    CJOBXmatrixLayer& operator=(const CJOBXmatrixLayer&) = delete;
    virtual ~CJOBXmatrixLayer();

    // The block with an empty line before it and no line end after its closing brace; all ten keys, empty ones too. A
    // null file writes nothing.
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

// The layers of a matrix in file order; owns them. Null entries are passed over.
class JOBX_API CJOBXmatrixLayerArray : public COwningPtrArray<CJOBXmatrixLayer>
{
public:
    CJOBXmatrixLayerArray();
    ~CJOBXmatrixLayerArray() override;

    // Each layer's block, each followed by a line end. A null file writes nothing.
    void WriteODBData(FILE* file) const;
    // 1 when a layer of that name, letter case aside, has exactly the type "DRILL"; a layer of the name with another
    // type does not end the search. Else 0.
    int IsDrillLayer(const CString& name) const;
    // The first layer of that name, letter case aside; null when there is none. The array keeps it.
    CJOBXmatrixLayer* GetMatrixLayer(const CString& name) const;

    // Each gives every layer the same value.
    void SetODBmatrixLayerName(const CString& name);
    void SetODBmatrixLayerPolarity(const CString& polarity);
    void SetODBmatrixLayerType(const CString& type);
    void SetODBmatrixLayerContext(const CString& context);
    // Numbers the rows upwards: the layer at index i gets `first` + i.
    void SetODBmatrixLayerRow(int first);
};
