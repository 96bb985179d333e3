#include "foundation/CJOBXkeyed.h"

#include "foundation/CJOBXProperty.h"
#include "foundation/framework/AsciiText.h"
#include "foundation/framework/Guarded.h"

#include <utility>

CJOBXkeyed::CJOBXkeyed() = default;

CJOBXkeyed::CJOBXkeyed(const CJOBXkeyed& other)
    : m_pFurtherKeys(other.m_pFurtherKeys != nullptr ? other.m_pFurtherKeys->clone() : nullptr)
{
}

CJOBXkeyed& CJOBXkeyed::operator=(const CJOBXkeyed& other)
{
    CJOBXkeyed copy(other);
    std::swap(m_pFurtherKeys, copy.m_pFurtherKeys);
    return *this;
}

CJOBXkeyed::~CJOBXkeyed() = default;

CJOBXPropertyArray* CJOBXkeyed::pMakeFurtherKeys()
{
    return Guarded(
        [&]
        {
            if (m_pFurtherKeys == nullptr)
                m_pFurtherKeys = std::make_unique<CJOBXPropertyArray>();
            return m_pFurtherKeys.get();
        });
}

CString CJOBXkeyed::sGetFurtherValue(const CString& key) const
{
    if (m_pFurtherKeys != nullptr)
        for (const CJOBXProperty& property : m_pFurtherKeys->Records())
            if (AsciiEqualNoCase(property.m_sName.View(), key.View()))
                return property.m_sValue;
    return {};
}
