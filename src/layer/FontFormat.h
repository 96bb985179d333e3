// The spellings of the font file, and the form of its characters.
#pragma once

#include "foundation/CTextWriter.h"

class CJOBXfontsStandardArray;
class CJOBXfontsStandardObjArray;

namespace font_format
{
// The file and its folder.
inline constexpr char kFile[] = "standard";
inline constexpr char kFolder[] = "fonts";

inline constexpr char kCharacterEnd[] = "ECHAR";
inline constexpr char kCharacter[] = "CHAR";
inline constexpr char kStroke[] = "LINE";
inline constexpr char kOffset[] = "OFFSET";
inline constexpr char kXSize[] = "XSIZE";
inline constexpr char kYSize[] = "YSIZE";

void Write(CTextWriter& out, const CJOBXfontsStandardArray& characters);
void Write(CTextWriter& out, const CJOBXfontsStandardObjArray& strokes);
} // namespace font_format
