#include "diff/Meaning.h"

#include "diff/DiffRecords.h"

#include <array>

namespace
{
// Those that are lengths without a definition of their own.
constexpr std::array<std::string_view, 24> kLengthAttributes = {".board_thickness",
                                                                ".layer_dielectric",
                                                                ".thickness_over_cu",
                                                                ".thickness_over_sm",
                                                                ".et_adjacency",
                                                                ".comp_height",
                                                                ".comp_height_max",
                                                                ".comp_htol_minus",
                                                                ".comp_htol_plus",
                                                                ".drc_max_height",
                                                                ".drc_min_height",
                                                                ".fill_dx",
                                                                ".fill_dy",
                                                                ".image_dx",
                                                                ".image_dy",
                                                                ".text_line_width",
                                                                ".text_x_size",
                                                                ".text_y_size",
                                                                ".depth",
                                                                ".impedance_test_width",
                                                                ".se_coupon_dist",
                                                                ".se_coupon_max_size",
                                                                ".se_coupon_min_size",
                                                                ".se_coupon_slot_length"};
} // namespace

bool IsLengthAttribute(std::string_view name)
{
    const std::string folded = FoldedName(name);
    return std::find(kLengthAttributes.begin(), kLengthAttributes.end(), folded) != kLengthAttributes.end();
}

std::optional<double> LengthOfAttribute(const CJOBXProperty& attribute, double factor)
{
    if (!IsLengthAttribute(attribute.m_sName.View()))
        return std::nullopt;
    const std::optional<double> length = NumberIn(std::string(attribute.m_sValue.View()));
    return length ? std::optional(*length * factor) : std::nullopt;
}

std::optional<double> PlainNumberOfAttribute(const CJOBXProperty& attribute)
{
    const bool isNumber =
        attribute.GetKind() == JOBXattributeKind::Real || attribute.GetKind() == JOBXattributeKind::Integer;
    if (!isNumber || IsLengthAttribute(attribute.m_sName.View()))
        return std::nullopt;
    return NumberIn(std::string(attribute.m_sValue.View()));
}
