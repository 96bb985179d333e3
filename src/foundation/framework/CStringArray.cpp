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

const CRuntimeClass* CStringArray::GetThisClass()
{
    static const CRuntimeClass kClass{"CStringArray", static_cast<int>(sizeof(CStringArray)), 0, nullptr,
                                      CObject::GetThisClass()};
    return &kClass;
}

const CRuntimeClass* CStringArray::GetRuntimeClass() const
{
    return GetThisClass();
}

void CStringArray::Serialize(CArchive& archive)
{
    if (archive.IsStoring())
    {
        archive.WriteCount(static_cast<ULONGLONG>(m_nSize));
        for (INT_PTR i = 0; i < m_nSize; ++i)
            archive << m_pData[i];
        return;
    }
    RemoveAll();
    const ULONGLONG count = archive.ReadCount();
    for (ULONGLONG i = 0; i < count; ++i) // the count is not believed: a short archive ends this by its exception
    {
        CString text;
        archive >> text;
        Add(text);
    }
}

bool CStringArray::operator==(const CStringArray& other) const
{
    return std::equal(m_pData, m_pData + m_nSize, other.m_pData, other.m_pData + other.m_nSize);
}
