// Guesses which name was meant by one that does not exist.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// The name with the fewest changes from `typed`: a letter inserted, deleted or replaced, or two neighbours swapped. The
// case of ASCII letters is ignored. Of equally near names, the first one wins.
// Results:   "" if `typed` has fewer than 2 or more than 100 characters, or if every name is further away than a third
//            of its length, but at least one change and at most three.
std::string_view NearestName(std::string_view typed, const std::vector<std::string>& names);

// As above, as the end of a message: `; did you mean "NAME"?`, or "".
std::string DidYouMean(std::string_view typed, const std::vector<std::string>& names);
