// The text of the font file: what its reader and its writer share.
#pragma once

#include "foundation/CTextWriter.h"

class CJOBXfontsStandardArray;
class CJOBXfontsStandardObjArray;

namespace font_file
{
inline constexpr char kCharacterEnd[] = "ECHAR";
inline constexpr char kCharacter[] = "CHAR";
inline constexpr char kStroke[] = "LINE";
inline constexpr char kOffset[] = "OFFSET";
inline constexpr char kXSize[] = "XSIZE";
inline constexpr char kYSize[] = "YSIZE";

void Write(CTextWriter& out, const CJOBXfontsStandardArray& characters);
void Write(CTextWriter& out, const CJOBXfontsStandardObjArray& strokes);
} // namespace font_file
