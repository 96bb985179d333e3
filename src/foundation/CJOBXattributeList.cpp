#include "foundation/CJOBXattributeList.h"

#include "foundation/framework/AsciiText.h"
#include "foundation/framework/Guarded.h"

CJOBXattributeList::CJOBXattributeList() = default;

CJOBXattributeList::~CJOBXattributeList() = default;

const CJOBXProperty* CJOBXattributeList::pGetAttribute(const CString& name) const
{
    for (const CJOBXProperty& attribute : m_arrAttributes.Records())
        if (AsciiEqualNoCase(attribute.m_sName.View(), name.View()))
            return &attribute;
    return nullptr;
}

CJOBXattributed::CJOBXattributed() = default;

CJOBXattributed::~CJOBXattributed() = default;

CJOBXattributeList* CJOBXattributed::pMakeAttributeList()
{
    return Guarded(
        [&]
        {
            if (m_pAttributeList == nullptr)
                m_pAttributeList = std::make_unique<CJOBXattributeList>();
            return m_pAttributeList.get();
        });
}

void CJOBXattributed::RemoveAttributeList() noexcept
{
    m_pAttributeList.reset();
}
