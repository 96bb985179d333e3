#include "reading/SystemAttributes.h"

#include <initializer_list>

namespace
{
struct OptionAttribute
{
    std::string_view name;
    std::initializer_list<const char*> options; // from number 0 on
};
constexpr std::initializer_list<const char*> kMountTypes = {"other", "smt", "thmt", "pressfit"};
constexpr std::initializer_list<const char*> kDrillTypes = {"plated", "non_plated", "via"};
constexpr std::initializer_list<const char*> kPadUsages = {"toeprint",   "via",          "g_fiducial",
                                                           "l_fiducial", "tooling_hole", "bond_finger"};
constexpr OptionAttribute kOptionAttributes[] = {
    {".comp_mount_type", kMountTypes},
    {".drill", kDrillTypes},
    {".pad_usage", kPadUsages},
};

constexpr std::string_view kTextAttributes[] = {".geometry", ".string"};

// Lengths and angles.
constexpr std::string_view kRealAttributes[] = {
    ".board_thickness", ".comp_height",        ".comp_height_max",    ".comp_htol_minus",       ".comp_htol_plus",
    ".depth",           ".drc_max_height",     ".drc_min_height",     ".et_adjacency",          ".fill_dx",
    ".fill_dy",         ".image_dx",           ".image_dy",           ".impedance_test_width",  ".layer_dielectric",
    ".se_coupon_dist",  ".se_coupon_max_size", ".se_coupon_min_size", ".se_coupon_slot_length", ".string_angle",
    ".text_line_width", ".text_x_size",        ".text_y_size",        ".thickness_over_cu",     ".thickness_over_sm"};
} // namespace

void AddSystemAttributes(CAttributeTypes& types)
{
    for (const OptionAttribute& attribute : kOptionAttributes)
        types.Add(attribute.name, {JOBXattributeKind::Option, {attribute.options.begin(), attribute.options.end()}});
    for (const std::string_view name : kTextAttributes)
        types.Add(name, {JOBXattributeKind::Text, {}});
    for (const std::string_view name : kRealAttributes)
        types.Add(name, {JOBXattributeKind::Real, {}});
}
