// Free functions on text for readers and hosts.
#pragma once

#include "foundation/framework/CString.h"
#include "foundation/framework/CStringArray.h"
#include "foundation/framework/FrameworkTypes.h"
#include "foundation/framework/JobxExport.h"

// A copy in upper or lower case; only ASCII letters change.
JOBX_API CString MakeUpper(const CString& text);
JOBX_API CString MakeLower(const CString& text);

// Splits `text` at the characters in `delimiters` into `tokens`, in order, and returns the number of tokens. A run of
// delimiters separates once, also at both ends, so no token is empty. Without delimiters, the whole text is one token.
// A null text has no tokens. The five flags are accepted for compatibility with hosts and ignored.
JOBX_API ULONGLONG XTokenString(const char* text, const char* delimiters, CStringArray& tokens, int flag1, int flag2,
                                int flag3, int flag4, int flag5);
