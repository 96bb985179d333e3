#include "layer/FontLines.h"

#include "layer/CJOBXfonts.h"
#include "layer/FontFormat.h"
#include "saving/KeyedLines.h"

namespace
{
void ListSize(std::string_view name, double size, CRecordLines& lines)
{
    lines.Begin(0, CRecordLines::kUnknownLine);
    lines.Word(name).Real(size);
}

void ListStroke(const CJOBXfontsStandardObj& stroke, CRecordLines& lines)
{
    lines.Begin(1, CRecordLines::kUnknownLine);
    lines.Word(font_format::kStroke);
    for (const CPointD& point : {stroke.m_ptStart, stroke.m_ptEnd})
        lines.Real(point.x).Real(point.y);
    lines.Word(stroke.m_sPolarity.IsEmpty() ? "P" : stroke.m_sPolarity.View());
    lines.Word(stroke.m_sShape.IsEmpty() ? "R" : stroke.m_sShape.View());
    lines.Real(stroke.m_dWidth);
}

void ListCharacter(const CJOBXfontsStandard& character, CRecordLines& lines)
{
    lines.Begin(0, CRecordLines::kUnknownLine);
    lines.Word(font_format::kCharacter);
    if (!character.m_sName.IsEmpty())
        lines.Word(character.m_sName.View());
    lines.EndKey();
    for (const CJOBXfontsStandardObj& stroke : character.m_arrStrokes.Records())
        ListStroke(stroke, lines);
    lines.Begin(1, CRecordLines::kUnknownLine);
    lines.Word(font_format::kCharacterEnd);
}
} // namespace

void ListLines(const CJOBXfonts& font, CRecordLines& lines)
{
    ListUnits(font.GetUnit(), lines);
    ListSize(font_format::kXSize, font.m_dXSize, lines);
    ListSize(font_format::kYSize, font.m_dYSize, lines);
    ListSize(font_format::kOffset, font.m_dOffset, lines);
    for (const CJOBXfontsStandard& character : font.m_arrCharacters.Records())
        ListCharacter(character, lines);
}
