#pragma once

#include "compact/CCopyableArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"

// One row of the compact model's matrix: a layer.
// Ownership: owned by its array; copies are deep.
class JOBX_API CODBmatrixLayer : public CRaisingNew
{
public:
    CODBmatrixLayer() = default;
    CODBmatrixLayer(const CODBmatrixLayer&) = default;
    CODBmatrixLayer& operator=(const CODBmatrixLayer&) = default;
    virtual ~CODBmatrixLayer();
    virtual CODBmatrixLayer* clone() const; // the caller owns the copy

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

extern template class JOBX_API CExPtrArray<CODBmatrixLayer*, CODBmatrixLayer*>;

// The layers of a matrix; owns them.
class JOBX_API CODBmatrixLayerArray : public CCopyableArray<CODBmatrixLayer>
{
public:
    CODBmatrixLayerArray* clone() const override; // the caller owns the copy
};
