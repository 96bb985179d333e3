#pragma once

#include "foundation/framework/CString.h"

// The current local date and time, printed like strftime for a format that gives only digits; at most 127 bytes. A
// clock without local time raises CInvalidArgException.
// Threads:   may be called on several threads at once.
CString LocalTimeText(const char* format);
