// The text of the drill tools file, for its writers.
#pragma once

#include "foundation/CTextWriter.h"

class CJOBXtoolData;
class CJOBXtoolDataArray;

namespace tool_file
{
// The eight lines of a record.
void WriteRecord(CTextWriter& out, const CJOBXtoolData& tool);
// Every tool's block with an empty line before and after it.
void WriteBlocks(CTextWriter& out, const CJOBXtoolDataArray& tools);
} // namespace tool_file
