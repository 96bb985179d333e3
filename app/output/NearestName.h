// What a person may have meant by a name that does not exist.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// The name that takes the fewest changes to get from `typed`: a letter more, less or other, or two neighbours the other
// way round. The case of ASCII letters does not count. Of names as near as each other the first one is taken.
// Results: "" when every name is further away than a third of what was typed, three changes at most but at least one.
std::string_view NearestName(std::string_view typed, const std::vector<std::string>& names);

// The same as the end of a message: `; did you mean "NAME"?`, or "".
std::string DidYouMean(std::string_view typed, const std::vector<std::string>& names);
