#pragma once

#include "foundation/framework/CRaisingNew.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "foundation/framework/JobxExport.h"

// A labelled list of texts: the description of a record for a design tool.
// Ownership: has its texts by value; copies are deep.
class JOBX_API CECadClsLvl : public CRaisingNew
{
public:
    CECadClsLvl() = default;
    // A list with that label and no items.
    explicit CECadClsLvl(const CString& label) : m_sLabel(label) {}
    CECadClsLvl(const CECadClsLvl&) = default;
    CECadClsLvl& operator=(const CECadClsLvl&) = default;
    virtual ~CECadClsLvl();

    const CString& GetLabel() const { return m_sLabel; }
    void SetLabel(const CString& label) { m_sLabel = label; }
    const CStringArray& GetItemList() const { return m_arrItems; }
    void AddItem(const CString& item) { m_arrItems.Add(item); } // at the end

    CString m_sLabel;
    CStringArray m_arrItems;
};
