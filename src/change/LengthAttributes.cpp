#include "change/LengthAttributes.h"

#include "change/LengthConversion.h"
#include "foundation/framework/AsciiText.h"
#include "job/CJOBXmisc.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <optional>

namespace
{
constexpr std::array<std::string_view, 24> kLengths = {
    ".board_thickness", ".comp_height",        ".comp_height_max",    ".comp_htol_minus",       ".comp_htol_plus",
    ".depth",           ".drc_max_height",     ".drc_min_height",     ".et_adjacency",          ".fill_dx",
    ".fill_dy",         ".image_dx",           ".image_dy",           ".impedance_test_width",  ".layer_dielectric",
    ".se_coupon_dist",  ".se_coupon_max_size", ".se_coupon_min_size", ".se_coupon_slot_length", ".text_line_width",
    ".text_x_size",     ".text_y_size",        ".thickness_over_cu",  ".thickness_over_sm"};

// The units of definitions that mean a length in the unit of the file or thousandths of it.
constexpr std::array<std::string_view, 2> kLengthUnits = {"INCH_MM", "MIL_MICRON"};

std::string FoldedCase(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), AsciiLower);
    return lower;
}
} // namespace

CLengthAttributes::CLengthAttributes(const CJOBXmisc& misc)
{
    for (const CJOBXProperty& definition : misc.GetAttributeUnits()->Records())
        m_defined.try_emplace(FoldedCase(definition.m_sName.View()),
                              std::any_of(kLengthUnits.begin(), kLengthUnits.end(),
                                          [&](std::string_view unit)
                                          { return AsciiEqualNoCase(definition.m_sValue.View(), unit); }));
}

bool CLengthAttributes::IsLength(std::string_view name) const
{
    const std::string folded = FoldedCase(name);
    if (const auto found = m_defined.find(folded); found != m_defined.end())
        return found->second;
    return std::find(kLengths.begin(), kLengths.end(), folded) != kLengths.end();
}

bool CLengthAttributes::Holds(const CJOBXProperty& attribute) const
{
    const JOBXattributeKind kind = attribute.GetKind();
    return kind != JOBXattributeKind::Text && kind != JOBXattributeKind::Option && kind != JOBXattributeKind::Flag &&
           !attribute.m_sValue.IsEmpty() && IsLength(attribute.m_sName.View());
}

void CLengthAttributes::Convert(CJOBXProperty& attribute, JOBXunit to) const
{
    if (!Holds(attribute))
        return;
    std::optional<std::string> value = ConvertedNumber(attribute.m_sValue.View(), to);
    if (!value)
        return;
    double number = 0.0;
    if (attribute.GetKind() == JOBXattributeKind::Integer)
    {
        std::from_chars(value->data(), value->data() + value->size(), number);
        value = std::to_string(std::llround(number));
    }
    attribute.m_sValue = std::string_view(*value);
}
