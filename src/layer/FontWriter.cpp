#include "foundation/corekit/CKUtility.h"
#include "foundation/corekit/FreshDirectory.h"
#include "layer/CJOBXfonts.h"
#include "layer/FontFormat.h"

void CJOBXfonts::WriteStandardFont(const CString& jobFolder) const
{
    CKUtility& utility = *CKUtility::GetInstance();
    const CString folder = utility.CKPathCombine(jobFolder, font_format::kFolder, __FILE__, __LINE__);
    ReplaceDirectory(folder);
    if (!utility.DoesFileExist(font_format::kFile, __FILE__, __LINE__)) // in the current directory
        return;
    CTextWriter out(utility.CKPathCombine(folder, font_format::kFile, __FILE__, __LINE__), __FILE__, __LINE__);
    // One line without separators, and the offset under the keyword of the x size: intended, hosts rely on it.
    out << font_format::kXSize << ' ' << Fixed{m_dXSize} << font_format::kYSize << ' ' << Fixed{m_dYSize}
        << font_format::kXSize << ' ' << Fixed{m_dOffset};
    font_format::Write(out, m_arrCharacters);
}

void CJOBXfontsStandardArray::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    font_format::Write(out, *this);
}

void font_format::Write(CTextWriter& out, const CJOBXfontsStandardArray& characters)
{
    for (const CJOBXfontsStandard& character : characters.Records())
    {
        out << '\n' << font_format::kCharacter << ' ' << character.m_sName << '\n';
        font_format::Write(out, character.m_arrStrokes);
        out << font_format::kCharacterEnd << '\n';
    }
}

void CJOBXfontsStandardObjArray::WriteODBData(FILE* file) const
{
    CTextWriter out(file);
    font_format::Write(out, *this);
}

void font_format::Write(CTextWriter& out, const CJOBXfontsStandardObjArray& strokes)
{
    for (const CJOBXfontsStandardObj& stroke : strokes.Records())
        out << font_format::kStroke << ' ' << General{stroke.m_ptStart.x} << ' ' << General{stroke.m_ptStart.y} << ' '
            << General{stroke.m_ptEnd.x} << ' ' << General{stroke.m_ptEnd.y} << ' ' << stroke.m_sPolarity << ' '
            << stroke.m_sShape << ' ' << General{stroke.m_dWidth} << '\n';
}
