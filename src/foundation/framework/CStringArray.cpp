#include "foundation/framework/CStringArray.h"

#include <algorithm>

template class CArray<CString, const CString&>;

CStringArray::CStringArray() = default;

CStringArray::CStringArray(const CStringArray& other) : CArray()
{
    Copy(other);
}

CStringArray& CStringArray::operator=(const CStringArray& other)
{
    Copy(other);
    return *this;
}

CStringArray::~CStringArray() = default;

CRuntimeClass* CStringArray::GetThisClass()
{
    static CRuntimeClass theClass{"CStringArray", static_cast<int>(sizeof(CStringArray)), 0,
                                  []() -> CObject* { return new CStringArray; }, CObject::GetThisClass()};
    return &theClass;
}

CRuntimeClass* CStringArray::GetRuntimeClass() const
{
    return GetThisClass();
}

bool CStringArray::operator==(const CStringArray& other) const
{
    return std::equal(m_pData, m_pData + m_nSize, other.m_pData, other.m_pData + other.m_nSize);
}
