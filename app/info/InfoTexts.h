// How the texts of a job's information are shown.
#pragma once

#include "JOBXCLSDLL.h"

#include <cstdint>
#include <string>
#include <string_view>

// A count with its noun, which gets an "s" unless the count is 1.
std::string Count(std::int64_t count, std::string_view one);

// "20260105.090000" as "2026-01-05 09:00:00"; any other form unchanged.
std::string Date(const CString& date);

// When, by whom and with which program the job was saved.
std::string Saved(const CJOBXmisc& misc);
