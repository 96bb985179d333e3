#include "layer/CJOBXfonts.h"
#include "layer/FontFormat.h"
#include "layer/FontReader.h"
#include "reading/CCheckedRecord.h"
#include "reading/CFileUnit.h"
#include "reading/FontMessageKinds.h"

#include <map>
#include <memory>

namespace
{
constexpr CCheckedRecord::Kinds kFontFields{font_message::kTooFew, font_message::kTooMany, font_message::kNotNumber};

class CCompleteFontReading
{
public:
    CCompleteFontReading(CSourceFile& file, CJOBXfonts& fonts)
        : m_text(file.Text()), m_messages(file.Messages()), m_fonts(fonts), m_unit(m_messages, fonts, JOBXunit::Inch)
    {
    }

    void Read()
    {
        while (m_text.NextLine())
            if (m_text.Line().front() != '#' && !m_unit.Take(m_text.Line(), Line()))
                OnRecord();
        CheckClosed();
    }

private:
    int Line() const noexcept { return m_text.LineNumber(); }

    void OnRecord()
    {
        CCheckedRecord fields(m_text.Line(), Line(), m_messages, kFontFields);
        if (fields.Is(font_format::kStroke))
            OnStroke(fields);
        else if (fields.Is(font_format::kCharacter))
            OnCharacter(fields);
        else if (fields.Is(font_format::kCharacterEnd))
            OnEnd(fields);
        else if (fields.Is(font_format::kXSize))
            OnSize(fields, m_fonts.m_dXSize);
        else if (fields.Is(font_format::kYSize))
            OnSize(fields, m_fonts.m_dYSize);
        else if (fields.Is(font_format::kOffset))
            OnSize(fields, m_fonts.m_dOffset);
        else
            m_messages.SayUnknown(font_message::kUnknown, Line(), "record", fields.Keyword());
    }

    void OnCharacter(CCheckedRecord& fields)
    {
        CheckClosed();
        m_character = m_fonts.m_arrCharacters.Own(std::make_unique<CJOBXfontsStandard>());
        m_characterLine = Line();
        std::string_view name;
        if (!fields.Rest(name))
            return;
        m_character->m_sName = name;
        if (const auto [first, isNew] = m_names.try_emplace(m_character->m_sName, Line()); !isNew)
            m_messages.Say(font_message::kSameName, Line(), "The character ", Quoted{name}, " is also on line ",
                           first->second, ".");
    }

    void OnEnd(CCheckedRecord& fields)
    {
        if (m_character == nullptr)
            m_messages.Say(font_message::kNoCharacter, Line(), "No character is open.");
        m_character = nullptr;
        fields.End();
    }

    void OnStroke(CCheckedRecord& fields)
    {
        if (m_character == nullptr)
            return m_messages.Say(font_message::kNoCharacter, Line(), "The stroke is in no character.");
        CJOBXfontsStandardObj& stroke = *m_character->m_arrStrokes.Own(std::make_unique<CJOBXfontsStandardObj>());
        fields.Point(stroke.m_ptStart);
        fields.Point(stroke.m_ptEnd);
        Letter(fields, stroke.m_sPolarity, "P", "N");
        Letter(fields, stroke.m_sShape, "R", "S");
        fields.Real(stroke.m_dWidth);
        fields.End();
    }
    void Letter(CCheckedRecord& fields, CString& letter, std::string_view one, std::string_view other)
    {
        if (fields.Text(letter) && !AsciiEqualNoCase(letter.View(), one) && !AsciiEqualNoCase(letter.View(), other))
            m_messages.Say(font_message::kUnknownWord, Line(), "The letter ", Quoted{letter.View()}, " is neither ",
                           one, " nor ", other, ".");
    }

    static void OnSize(CCheckedRecord& fields, double& size)
    {
        if (fields.Real(size))
            fields.End();
    }

    void CheckClosed()
    {
        if (m_character != nullptr)
            m_messages.Say(font_message::kNotClosed, m_characterLine, "The character ",
                           Quoted{m_character->m_sName.View()}, " is not closed.");
    }

    CLineScanner& m_text;
    CFileMessages& m_messages;
    CJOBXfonts& m_fonts;
    CFileUnit m_unit;
    CJOBXfontsStandard* m_character = nullptr; // the open one
    int m_characterLine = 0;
    std::map<CString, int> m_names;
};
} // namespace

void ReadCompletely(const CReadingContext& /*context*/, CSourceFile& file, CJOBXfonts& fonts)
{
    if (file.WasRead())
        CCompleteFontReading(file, fonts).Read();
}
