#include "JsonCounts.h"

#include <rapidjson/reader.h>

#include <string_view>
#include <vector>

namespace
{
class Counter : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Counter>
{
public:
    explicit Counter(JsonCounts& counts) : m_counts(counts) {}

    bool Default() { return true; }
    bool Key(const char* text, rapidjson::SizeType length, bool)
    {
        Level& level = m_levels.back();
        if (level.isFirst)
            m_counts.firstKeys[m_place.substr(0, level.length)].append(text, length).append(" ");
        m_place.resize(level.length);
        m_place.append(level.length == 0 ? "" : "/").append(text, length);
        const std::string_view key(text, length);
        m_isKind = key == "kind" || key == "type" || key == "unit";
        m_isID = key == "id";
        return true;
    }
    bool Int(int) { return Number(); }
    bool Uint(unsigned) { return Number(); }
    bool Int64(std::int64_t) { return Number(); }
    bool Uint64(std::uint64_t) { return Number(); }
    bool String(const char* text, rapidjson::SizeType length, bool)
    {
        if (m_isKind)
            ++m_counts.texts[{m_place, std::string(text, length)}];
        return true;
    }
    bool StartObject()
    {
        m_levels.push_back({m_place.size(), ++m_counts.objects[m_place] == 1});
        return true;
    }
    bool EndObject(rapidjson::SizeType)
    {
        m_place.resize(m_levels.back().length);
        m_levels.pop_back();
        return true;
    }

private:
    struct Level
    {
        std::size_t length; // of the place of the object
        bool isFirst;       // at its place
    };

    bool Number()
    {
        if (m_isID)
            ++m_counts.texts[{m_place, JsonCounts::kNumber}];
        return true;
    }

    JsonCounts& m_counts;
    std::string m_place;
    std::vector<Level> m_levels;
    bool m_isKind = false;
    bool m_isID = false;
};
} // namespace

std::int64_t JsonCounts::Objects(const std::string& place) const
{
    const auto found = objects.find(place);
    return found == objects.end() ? 0 : found->second;
}

std::int64_t JsonCounts::Texts(const std::string& place, const std::string& text) const
{
    const auto found = texts.find({place, text});
    return found == texts.end() ? 0 : found->second;
}

JsonCounts CountJson(const std::string& document)
{
    JsonCounts counts;
    Counter counter(counts);
    rapidjson::StringStream stream(document.c_str());
    rapidjson::Reader reader;
    counts.isValid = static_cast<bool>(reader.Parse<rapidjson::kParseValidateEncodingFlag>(stream, counter));
    return counts;
}
