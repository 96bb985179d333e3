#include "change/SymbolNames.h"

#include "change/LengthConversion.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/AsciiText.h"
#include "layer/CJOBXSpecialSymbol.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace
{
// How the names of a standard symbol go on behind their beginning. Parts are separated by "x":
//   L  a length
//   N  another number: an angle in degrees, a count, or a share of a size in per cent
//   s  "r" or "s", round or square ends
//   p  "p", "n" or "v", the plating of a hole
//   l  a length that may be missing, with all behind it
//   R  "r" and a radius, and perhaps the numbers of the corners; may be missing
//   C  the same with "r" or "c"
struct SymbolForm
{
    std::string_view begins;
    std::string_view parts;
};
constexpr SymbolForm kSymbolForms[] = {
    {"r", "L"},
    {"s", "L"},
    {"rect", "LLC"},
    {"oval", "LL"},
    {"oval_h", "LL"},
    {"di", "LL"},
    {"oct", "LLL"},
    {"hex_l", "LLL"},
    {"hex_s", "LLL"},
    {"donut_r", "LL"},
    {"donut_s", "LLR"},
    {"donut_sr", "LL"},
    {"donut_rc", "LLLR"},
    {"donut_o", "LLL"},
    {"bfr", "L"},
    {"bfs", "L"},
    {"tri", "LL"},
    {"el", "LL"},
    {"hole", "LpLL"},
    {"thr", "LLNNL"},
    {"ths", "LLNNL"},
    {"s_ths", "LLNNLR"},
    {"s_tho", "LLNNL"},
    {"s_thr", "LLNNL"},
    {"sr_ths", "LLNNL"},
    {"rc_ths", "LLNNLL"},
    {"rc_tho", "LLNNLL"},
    {"o_ths", "LLNNLL"},
    {"oblong_ths", "LLNNLLs"},
    {"hplate", "LLLll"},
    {"rhplate", "LLLll"},
    {"fhplate", "LLLlll"},
    {"radhplate", "LLLll"},
    {"dshape", "LLLll"},
    {"cross", "LLLLNNsl"},
    {"dogbone", "LLLLNsl"},
    {"dpack", "LLLLNNl"},
    {"moire", "LLNLLN"},
    {"null", "N"},
};

std::string LowerCase(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), AsciiLower);
    return lower;
}

class CNameConversion
{
public:
    CNameConversion(std::string_view name, JOBXunit to) : m_to(to)
    {
        const std::size_t digit = std::min(name.find_first_of("0123456789."), name.size());
        const std::string begins = LowerCase(name.substr(0, digit));
        const auto* const form = std::find_if(std::begin(kSymbolForms), std::end(kSymbolForms),
                                              [&](const SymbolForm& each) { return each.begins == begins; });
        m_isSound = form != std::end(kSymbolForms);
        m_converted = name.substr(0, digit);
        m_rest = name.substr(digit);
        if (m_isSound)
            TakeAll(form->parts);
    }

    std::string Result() const { return m_isSound && m_isAtEnd ? m_converted : std::string(); }

private:
    void TakeAll(std::string_view parts)
    {
        Next();
        for (const char part : parts)
        {
            if (m_isAtEnd && (part == 'l' || part == 'R' || part == 'C'))
                return;
            if (m_isAtEnd || !Take(part))
            {
                m_isSound = false;
                return;
            }
        }
    }
    bool Take(char part)
    {
        switch (part)
        {
        case 'L':
        case 'l':
            return Length() && Next();
        case 'N':
            return IsNumber(m_part) && Keep() && Next();
        case 's':
            return IsLetterOf("rs") && Keep() && Next();
        case 'p':
            return IsLetterOf("pnv") && Keep() && Next();
        default:
            return Corners(part == 'C' ? "rc" : "r");
        }
    }

    // Takes the next part, up to the next "x".
    bool Next()
    {
        m_isAtEnd = m_isLast;
        const std::size_t end = std::min(m_rest.find_first_of("xX"), m_rest.size());
        m_isLast = end == m_rest.size();
        m_part = m_rest.substr(0, end);
        m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
        if (!m_isAtEnd && m_isBegun)
            m_converted += 'x';
        m_isBegun = true;
        return true;
    }
    bool Keep()
    {
        m_converted += m_part;
        return true;
    }
    bool Length()
    {
        if (!IsNumber(m_part))
            return false;
        m_converted += ConvertedNumber(m_part, m_to).value_or(std::string(m_part));
        return true;
    }
    bool Corners(std::string_view letters)
    {
        if (m_part.empty() || letters.find(AsciiLower(m_part.front())) == std::string_view::npos)
            return false;
        m_converted += m_part.front();
        m_part.remove_prefix(1);
        if (!Length() || !Next())
            return false;
        return m_isAtEnd ||
               (!m_part.empty() && m_part.find_first_not_of("1234") == std::string_view::npos && Keep() && Next());
    }
    static bool IsNumber(std::string_view text)
    {
        return text.find_first_of("0123456789") != std::string_view::npos &&
               text.find_first_not_of("0123456789.") == std::string_view::npos &&
               std::count(text.begin(), text.end(), '.') <= 1;
    }
    bool IsLetterOf(std::string_view letters) const
    {
        return m_part.size() == 1 && letters.find(AsciiLower(m_part.front())) != std::string_view::npos;
    }

    JOBXunit m_to;
    std::string m_converted;
    std::string_view m_rest;
    std::string_view m_part;
    bool m_isBegun = false;
    bool m_isLast = false;
    bool m_isAtEnd = false;
    bool m_isSound = false;
};
} // namespace

std::string ConvertedSymbolName(std::string_view name, JOBXunit to)
{
    return CNameConversion(name, to).Result();
}

CSymbolNames::CSymbolNames(const CJOBXSpecialSymbolArray& symbols)
{
    for (const CJOBXSpecialSymbol& symbol : symbols.Records())
    {
        const CString& place = symbol.m_sPath.IsEmpty() ? symbol.m_sName : symbol.m_sPath;
        m_userSymbols.insert(LowerCase(CKUtility::GetInstance()->GetSegmntFromFilePath(place, 2).View()));
        m_userSymbols.insert(LowerCase(symbol.m_sName.View()));
    }
}

CString CSymbolNames::Converted(const CString& name, JOBXunit to) const
{
    if (m_userSymbols.contains(LowerCase(name.View())))
        return name;
    const std::string converted = ConvertedSymbolName(name.View(), to);
    return converted.empty() ? name : CString(std::string_view(converted));
}

void CSymbolNames::ConvertTable(CJOBXlayer& layer, JOBXunit to) const
{
    for (INT_PTR i = 0; i < layer.m_arrSymbolNames.GetSize(); ++i)
    {
        CString* const letter =
            i < layer.m_arrSymbolSecondFields.GetSize() ? &layer.m_arrSymbolSecondFields[i] : nullptr;
        if (letter != nullptr && letter->CompareNoCase(CString(UnitLetter(to))) == 0)
            continue;
        layer.m_arrSymbolNames[i] = Converted(layer.m_arrSymbolNames[i], to);
        if (letter != nullptr && letter->CompareNoCase(CString(UnitLetter(OtherUnit(to)))) == 0)
            *letter = UnitLetter(to);
    }
}
