// The tables of attribute names and texts of a file that takes records from other files.
#pragma once

#include "change/CPlacement.h"
#include "change/LengthAttributes.h"
#include "foundation/CJOBXtailed.h"
#include "foundation/corekit/CArrayN.h"
#include "foundation/framework/CStringArray.h"

#include <algorithm>
#include <unordered_map>

// Numbered texts. Texts that are new get the next free number.
// Ownership: borrows the arrays.
class CMergedTable
{
public:
    CMergedTable(CStringArray& texts, CArrayN& numbers) : m_texts(texts), m_numbers(numbers)
    {
        for (INT_PTR i = 0; i < std::min(texts.GetSize(), numbers.GetSize()); ++i)
        {
            m_known.try_emplace(texts[i], numbers[i]);
            m_next = std::max(m_next, numbers[i] + 1);
        }
    }

    int NumberOf(const CString& text)
    {
        const auto [found, isNew] = m_known.try_emplace(text, m_next);
        if (isNew)
        {
            m_texts.Add(text);
            m_numbers.Add(m_next++);
        }
        return found->second;
    }

private:
    CStringArray& m_texts;
    CArrayN& m_numbers;
    std::unordered_map<CString, int> m_known;
    int m_next = 0;
};

// Both tables of a file.
class CMergedTables
{
public:
    CMergedTables(CStringArray& names, CArrayN& nameNumbers, CStringArray& texts, CArrayN& textNumbers,
                  const CLengthAttributes& lengths)
        : m_names(names, nameNumbers), m_texts(texts, textNumbers), m_lengths(lengths)
    {
    }

    // Gives attributes that come from another file the numbers of this one, and lengths its unit. The number of an option
    // belongs to its definition and stays. An attribute whose number had no name meant nothing and goes.
    void Adopt(CJOBXPropertyArray& attributes, const CPlacedFile& file)
    {
        for (__int64 i = attributes.GetSize() - 1; i >= 0; --i)
        {
            CJOBXProperty* const attribute = attributes.GetAt(i);
            if (attribute != nullptr && attribute->m_nNumber >= 0 && attribute->m_sName.IsEmpty())
                attributes.DeleteAt(static_cast<int>(i), 1);
        }
        for (CJOBXProperty& attribute : attributes.Records())
        {
            if (attribute.m_nNumber >= 0)
                attribute.m_nNumber = m_names.NumberOf(attribute.m_sName);
            if (attribute.m_nTextNumber >= 0 && attribute.GetKind() == JOBXattributeKind::Text)
                attribute.m_nTextNumber = m_texts.NumberOf(attribute.m_sValue);
            if (file.IsConverted())
                m_lengths.Convert(attribute, file.Unit());
        }
    }
    void Adopt(CJOBXtailed& record, const CPlacedFile& file)
    {
        if (record.pGetTailAttributes() != nullptr)
            Adopt(*record.pMakeTailAttributes(), file);
    }

private:
    CMergedTable m_names;
    CMergedTable m_texts;
    const CLengthAttributes& m_lengths;
};
