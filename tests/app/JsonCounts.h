// Counts what is in a JSON document without keeping it.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

// A place is the keys that lead to it with "/" between them; array positions do not count.
struct JsonCounts
{
    static constexpr const char* kNumber = "(number)"; // stands in texts for a unique number

    bool isValid = false;
    std::map<std::string, std::int64_t> objects;                       // how many objects stand at a place
    std::map<std::pair<std::string, std::string>, std::int64_t> texts; // how often a kind, type, unit or unique number
                                                                       // is at a place
    std::map<std::string, std::string> firstKeys;                      // the keys of the first object at a place

    std::int64_t Objects(const std::string& place) const;
    std::int64_t Texts(const std::string& place, const std::string& text) const;
};

JsonCounts CountJson(const std::string& document);
