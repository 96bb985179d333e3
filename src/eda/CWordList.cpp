#include "eda/CWordList.h"

#include "foundation/framework/Guarded.h"

#include <algorithm>

CWordList::CWordList() noexcept = default;

CWordList::CWordList(const CWordList& other)
{
    *this = other;
}

CWordList& CWordList::operator=(const CWordList& other)
{
    if (this == &other)
        return *this;
    if (other.m_pArray != nullptr)
        return *this = *other.m_pArray;
    SetJoined(other.m_sJoined);
    return *this;
}

CWordList& CWordList::operator=(const CStringArray& words)
{
    Array() = words;
    return *this;
}

CWordList::~CWordList() = default;

void CWordList::RemoveAll()
{
    SetJoined(CString());
}

INT_PTR CWordList::GetSize() const
{
    if (m_pArray != nullptr)
        return m_pArray->GetSize();
    const std::string_view words = m_sJoined.View();
    return words.empty() ? 0 : std::count(words.begin(), words.end(), ' ') + 1;
}

CString CWordList::GetAt(INT_PTR index) const
{
    CString found;
    INT_PTR at = 0;
    const bool isMissing = ForEach(
        [&](std::string_view word)
        {
            if (at++ != index)
                return true;
            found = word;
            return false;
        });
    if (isMissing)
        AfxThrowInvalidArgException();
    return found;
}

bool CWordList::operator==(const CWordList& other) const
{
    if (m_pArray == nullptr && other.m_pArray == nullptr)
        return m_sJoined == other.m_sJoined;
    return Array() == other.Array();
}

void CWordList::SetJoined(const CString& words)
{
    m_sJoined = words;
    m_pArray.reset();
}

CStringArray& CWordList::Array() const
{
    if (m_pArray != nullptr)
        return *m_pArray;
    Guarded(
        [this]
        {
            auto array = std::make_unique<CStringArray>();
            array->SetSize(GetSize());
            INT_PTR at = 0;
            ForEach(
                [&](std::string_view word)
                {
                    (*array)[at++] = word;
                    return true;
                });
            m_pArray = std::move(array);
            m_sJoined.Empty();
        });
    return *m_pArray;
}
