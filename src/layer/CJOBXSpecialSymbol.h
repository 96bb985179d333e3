#pragma once

#include "foundation/base/CExPtrArray.h"
#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "layer/CJOBXlayer.h"

// One user symbol of a job: its name and its features.
// Units:     as in its features file.
// Ownership: owns its layer; not copyable.
class JOBX_API CJOBXSpecialSymbol : public CRaisingNew
{
public:
    CJOBXSpecialSymbol();
    CJOBXSpecialSymbol(const CJOBXSpecialSymbol&) = delete;
    CJOBXSpecialSymbol& operator=(const CJOBXSpecialSymbol&) = delete;
    virtual ~CJOBXSpecialSymbol();

    // The symbol's features, borrowed.
    CJOBXlayer* GetLayer() { return &m_layer; }
    const CJOBXlayer* GetLayer() const { return &m_layer; }

    CStringArray m_arrTexts; // for the host
    CString m_sName;         // after reading the whole job the directory path, after reading chosen steps its last
                             // component
    CString m_sPath;         // the directory of the symbol's features file

private:
    CJOBXlayer m_layer;
};

extern template class JOBX_API CExPtrArray<CJOBXSpecialSymbol*, CJOBXSpecialSymbol*>;

// The user symbols of a job, in the order of their file paths; owns them.
class JOBX_API CJOBXSpecialSymbolArray : public COwningPtrArray<CJOBXSpecialSymbol>
{
public:
    CJOBXSpecialSymbolArray();
    ~CJOBXSpecialSymbolArray() override;

    // The index of the first symbol of exactly that name, -1 if there is none.
    int nGetSpecialSymbolIndex(const CString& name) const;
    // Multiplies the lengths of every symbol's features.
    void UnitConvert(const double& factor);
};
