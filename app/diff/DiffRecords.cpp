#include "diff/DiffRecords.h"

#include <algorithm>
#include <array>

std::string FoldedName(std::string_view name)
{
    std::string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(),
                   [](char letter)
                   { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; });
    return folded;
}

RowList RowsOf(std::string_view kind, const CArrayN& numbers, const CStringArray& texts, const CStringArray* seconds)
{
    RowList list;
    for (INT_PTR i = 0; i < numbers.GetSize() && i < texts.GetSize(); ++i)
        list.rows.push_back({kind, numbers[i], std::to_string(numbers[i]), texts[i],
                             seconds != nullptr && i < seconds->GetSize() ? (*seconds)[i] : CString()});
    return list;
}

RowList LinesOf(std::string_view kind, const CStringArray& lines)
{
    RowList list;
    for (INT_PTR i = 0; i < lines.GetSize(); ++i)
        list.rows.push_back({kind, 0, std::string(lines[i].View()), {}, {}});
    return list;
}

RecordPlace PlaceOf(const CJOBXlayObj& feature)
{
    static constexpr std::array<RecordPlace, 6> kPlaces = {{{"feature L", "feature", {}, "L"},
                                                            {"feature P", "feature", {}, "P"},
                                                            {"feature A", "feature", {}, "A"},
                                                            {"feature T", "feature", {}, "T"},
                                                            {"feature B", "feature", {}, "B"},
                                                            {"feature S", "feature", {}, "S"}}};
    const CString type = feature.GetType();
    const auto* const found = std::find_if(kPlaces.begin(), kPlaces.end(),
                                           [&](const RecordPlace& place) { return place.mark == type.View(); });
    return found == kPlaces.end() ? RecordPlace{"feature", "feature", {}, {}} : *found;
}
