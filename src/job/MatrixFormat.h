// The spellings of the matrix file, and the form of its blocks.
#pragma once

#include "foundation/CTextWriter.h"

class CJOBXmatrixLayer;
class CJOBXmatrixLayerArray;
class CJOBXmatrixStep;
class CJOBXmatrixStepArray;

namespace matrix_format
{
// The file and its folder.
inline constexpr char kMatrix[] = "matrix";

inline constexpr char kStep[] = "STEP";
inline constexpr char kColumn[] = "COL";
inline constexpr char kLayer[] = "LAYER";
inline constexpr char kRow[] = "ROW";
inline constexpr char kContext[] = "CONTEXT";
inline constexpr char kType[] = "TYPE";
inline constexpr char kName[] = "NAME"; // of a step and of a layer
inline constexpr char kPolarity[] = "POLARITY";
inline constexpr char kStartName[] = "START_NAME";
inline constexpr char kEndName[] = "END_NAME";
inline constexpr char kOldName[] = "OLD_NAME";
inline constexpr char kAddType[] = "ADD_TYPE";
inline constexpr char kColor[] = "COLOR";
inline constexpr char kID[] = "ID"; // only read completely

// A block: an empty line, its head, its keys and the closing brace without a line end.
void WriteBlock(CTextWriter& out, const CJOBXmatrixStep& step);
void WriteBlock(CTextWriter& out, const CJOBXmatrixLayer& layer);
// The blocks of a list, each followed by a line end.
void WriteBlocks(CTextWriter& out, const CJOBXmatrixStepArray& steps);
void WriteBlocks(CTextWriter& out, const CJOBXmatrixLayerArray& layers);

} // namespace matrix_format
