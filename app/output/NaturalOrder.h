#pragma once

#include <string_view>

// Whether `a` comes before `b` as a person sorts: digits count as a number, so R2 comes before R10, and the case of
// ASCII letters only decides between texts that are equal otherwise. A strict weak order.
bool IsNaturallyBefore(std::string_view a, std::string_view b) noexcept;
