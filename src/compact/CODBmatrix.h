#pragma once

#include "compact/CODBmatrixLayer.h"
#include "foundation/framework/CRaisingNew.h"

// The matrix of the compact model: a table of the layers.
// Ownership: owned by its job, owns its layers; copies are deep.
class JOBX_API CODBmatrix : public CRaisingNew
{
public:
    CODBmatrix() = default;
    CODBmatrix(const CODBmatrix&) = default;
    CODBmatrix& operator=(const CODBmatrix&) = default;
    virtual ~CODBmatrix();
    virtual CODBmatrix* clone() const; // the caller owns the copy

    CODBmatrixLayerArray m_arrLayers;
};
