#pragma once

#include "compact/CODBlayer.h"
#include "foundation/framework/CRaisingNew.h"

// One user symbol of the compact model: its name and its features.
// Units:     lengths in the unit named by the units text. A unit change stores the factor but does not change the
//            features; this is intended.
// Ownership: owned by its array, owns its layer; copies are deep.
class JOBX_API CODBSpecialSymbol : public CRaisingNew
{
public:
    CODBSpecialSymbol() = default;
    CODBSpecialSymbol(const CODBSpecialSymbol&) = default;
    CODBSpecialSymbol& operator=(const CODBSpecialSymbol&) = default;
    virtual ~CODBSpecialSymbol();
    virtual CODBSpecialSymbol* clone() const; // the caller owns the copy

    CStringArray m_arrTexts; // for the host
    CString m_sName;
    CODBlayer m_layer;             // the features
    CString m_sPath;               // the directory of the symbol's features file
    CString m_sUnits = "INCH";     // or "MM" or "MIL"
    double m_dRescaleFactor = 1.0; // last computed
};

extern template class JOBX_API CExPtrArray<CODBSpecialSymbol*, CODBSpecialSymbol*>;

// The user symbols of a job; owns them.
class JOBX_API CODBSpecialSymbolArray : public CCopyableArray<CODBSpecialSymbol>
{
public:
    CODBSpecialSymbolArray* clone() const override; // the caller owns the copy
};
