#include "foundation/KeywordTable.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/framework/Guarded.h"
#include "layer/CJOBXfonts.h"
#include "layer/FontFormat.h"

#include <memory>

namespace
{
struct FontReading
{
    CJOBXfonts& fonts;
    CJOBXfontsStandard* character = nullptr; // null outside a character
};

// The text after the first blank; "" without one.
std::string_view AfterBlank(std::string_view line)
{
    const std::size_t blank = line.find(' ');
    return blank == std::string_view::npos ? std::string_view() : Trimmed(line.substr(blank + 1));
}

void OnCharacterEnd(FontReading& reading, std::string_view /*line*/)
{
    reading.character = nullptr;
}

void OnCharacter(FontReading& reading, std::string_view line)
{
    reading.character = reading.fonts.m_arrCharacters.Own(std::make_unique<CJOBXfontsStandard>());
    reading.character->m_sName = AfterBlank(line);
}

// Missing last fields keep their defaults. A stroke outside a character is dropped.
void OnStroke(FontReading& reading, std::string_view line)
{
    if (reading.character == nullptr)
        return;
    CJOBXfontsStandardObj& stroke = *reading.character->m_arrStrokes.Own(std::make_unique<CJOBXfontsStandardObj>());
    CFieldScanner fields(line);
    fields.Skip();
    fields.Real(stroke.m_ptStart.x);
    fields.Real(stroke.m_ptStart.y);
    fields.Real(stroke.m_ptEnd.x);
    fields.Real(stroke.m_ptEnd.y);
    fields.Text(stroke.m_sPolarity);
    fields.Text(stroke.m_sShape);
    fields.Real(stroke.m_dWidth);
}

template <double CJOBXfonts::*member>
void OnSize(FontReading& reading, std::string_view line)
{
    reading.fonts.*member = ParseReal(AfterBlank(line));
}

// Tried from the top, first match wins. The order is behaviour: do not sort it.
constexpr Keyword<FontReading> kFontKeywords[] = {
    {font_format::kCharacterEnd, OnCharacterEnd},
    {font_format::kCharacter, OnCharacter},
    {font_format::kStroke, OnStroke},
    {font_format::kOffset, OnSize<&CJOBXfonts::m_dOffset>},
    {font_format::kXSize, OnSize<&CJOBXfonts::m_dXSize>},
    {font_format::kYSize, OnSize<&CJOBXfonts::m_dYSize>, Letters::AsWritten}, // upper case only; intended
};

void ReadLines(CLineScanner& text, CJOBXfonts& fonts)
{
    FontReading reading{fonts};
    while (text.NextLine())
        Dispatch<kFontKeywords>(reading, text.Line());
}
} // namespace

int CJOBXfonts::ParseStandardFont(const CString& folder)
{
    CKUtility& utility = *CKUtility::GetInstance();
    if (!utility.IsDir(folder))
        return 0;
    const CString path = utility.FindPath(folder, font_format::kFile, __FILE__, __LINE__);
    if (!utility.DoesFileExist(path, __FILE__, __LINE__))
        return 1;
    return Guarded(
        [&]
        {
            CLineScanner text(path, __FILE__, __LINE__);
            ReadLines(text, *this);
            return 1;
        });
}
