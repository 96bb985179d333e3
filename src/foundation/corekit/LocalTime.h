#pragma once

#include "foundation/framework/CString.h"

// The local date and time of now, printed as strftime does with this format of digits; at most 127 bytes. A clock that
// gives no local time raises CInvalidArgException.
// Threads: may be called on several threads at once.
CString LocalTimeText(const char* format);
