#include "layer/CJOBXfonts.h"

#include "foundation/KeywordTable.h"
#include "foundation/ScaleLengths.h"
#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/FreshDirectory.h"
#include "foundation/framework/Guarded.h"
#include "layer/CJOBXfontsFields.h"
#include "layer/FontFile.h"

#include <memory>

using namespace font_file;

namespace
{
constexpr char kFolder[] = "fonts";
constexpr char kFile[] = "standard";

struct State
{
    CJOBXfonts& fonts;
    CJOBXfontsStandard* character = nullptr; // null outside a character
};

// What follows the first blank; nothing when there is none.
std::string_view AfterBlank(std::string_view line)
{
    const std::size_t blank = line.find(' ');
    return blank == std::string_view::npos ? std::string_view() : Trimmed(line.substr(blank + 1));
}

void EndCharacter(State& state, std::string_view /*line*/)
{
    state.character = nullptr;
}

void BeginCharacter(State& state, std::string_view line)
{
    state.character = state.fonts.m_arrCharacters.Own(std::make_unique<CJOBXfontsStandard>());
    state.character->m_sName = AfterBlank(line);
}

// Missing last fields keep their defaults; a stroke outside a character has nowhere to go.
void TakeStroke(State& state, std::string_view line)
{
    if (state.character == nullptr)
        return;
    CJOBXfontsStandardObj& stroke = *state.character->m_arrStrokes.Own(std::make_unique<CJOBXfontsStandardObj>());
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
void TakeSize(State& state, std::string_view line)
{
    state.fonts.*member = ParseReal(AfterBlank(line));
}

// Tried from the top, the first match wins. The order is behaviour: do not sort it.
constexpr Keyword<State> kKeywords[] = {
    {kCharacterEnd, EndCharacter},
    {kCharacter, BeginCharacter},
    {kStroke, TakeStroke},
    {kOffset, TakeSize<&CJOBXfonts::m_dOffset>},
    {kXSize, TakeSize<&CJOBXfonts::m_dXSize>},
    {kYSize, TakeSize<&CJOBXfonts::m_dYSize>, Letters::AsWritten}, // in upper case only: intended
};
} // namespace

CJOBXfonts::CJOBXfonts() = default;

CJOBXfonts::~CJOBXfonts() = default;

int CJOBXfonts::ParseStandardFont(const CString& folder)
{
    CKUtility& utility = *CKUtility::GetInstance();
    if (!utility.IsDir(folder))
        return 0;
    const CString path = utility.FindPath(folder, kFile, __FILE__, __LINE__);
    if (!utility.DoesFileExist(path, __FILE__, __LINE__))
        return 1;
    return Guarded(
        [&]
        {
            CTextScanner text(path, __FILE__, __LINE__);
            State state{*this};
            while (text.NextLine())
                Dispatch<kKeywords>(state, text.Line());
            return 1;
        });
}

void CJOBXfonts::WriteStandardFont(const CString& jobFolder) const
{
    CKUtility& utility = *CKUtility::GetInstance();
    const CString folder = utility.CKPathCombine(jobFolder, kFolder, __FILE__, __LINE__);
    ReplaceDirectory(folder);
    if (!utility.DoesFileExist(kFile, __FILE__, __LINE__)) // in the current directory
        return;
    CTextWriter out(utility.CKPathCombine(folder, kFile, __FILE__, __LINE__), __FILE__, __LINE__);
    // One line without separators, the offset under the keyword of the x size: intended, hosts rely on it.
    out << kXSize << ' ' << Fixed{m_dXSize} << kYSize << ' ' << Fixed{m_dYSize} << kXSize << ' ' << Fixed{m_dOffset};
    Write(out, m_arrCharacters);
}

void CJOBXfonts::UnitConvert(const double& factor)
{
    jobx::ScaleLengths(*this, factor);
}
