// Free functions on text that readers and hosts share.
#pragma once

#include "foundation/JobxExport.h"
#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "foundation/framework/FrameworkTypes.h"

// A copy in upper or lower case; only ASCII letters change.
JOBX_API CString MakeUpper(const CString& text);
JOBX_API CString MakeLower(const CString& text);

// Makes `tokens` the pieces of `text` between characters of `delimiters`, in order, and returns how many there are.
// Runs of such characters separate once, also at both ends, so that no token is empty. Without delimiters the whole
// text is one token. A null text has no tokens. The five flags are taken for the sake of hosts and change nothing.
JOBX_API ULONGLONG XTokenString(const char* text, const char* delimiters, CStringArray& tokens, int flag1, int flag2,
                                int flag3, int flag4, int flag5);
