#include "change/FlippedLayers.h"

#include "job/CJOBXmatrix.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace
{
void Add(CJOBXmatrix& matrix, const char* type, const char* name, const char* start = "", const char* end = "",
         const char* context = "BOARD")
{
    auto row = std::make_unique<CJOBXmatrixLayer>();
    row->m_nRow = static_cast<int>(matrix.m_arrLayers.GetSize()) + 1;
    row->m_sType = type;
    row->m_sName = name;
    row->m_sStartName = start;
    row->m_sEndName = end;
    row->m_sContext = context;
    matrix.m_arrLayers.Own(std::move(row));
}

std::string Flipped(const CJOBXmatrix& matrix, const char* name)
{
    return CFlippedLayers(matrix).Of(name).value_or("none");
}
} // namespace

TEST(FlippedLayers, ExchangeLayersInTheOrderOfTheMatrix)
{
    CJOBXmatrix matrix;
    Add(matrix, "COMPONENT", "COMP_+_TOP");
    Add(matrix, "SILK_SCREEN", "SST");
    Add(matrix, "SOLDER_MASK", "SMT2");
    Add(matrix, "SOLDER_MASK", "SMT");
    Add(matrix, "SIGNAL", "TOP");
    Add(matrix, "DIELECTRIC", "D1");
    Add(matrix, "POWER_GROUND", "GND");
    Add(matrix, "DIELECTRIC", "D2");
    Add(matrix, "MIXED", "BOT");
    Add(matrix, "SOLDER_MASK", "SMB");
    Add(matrix, "SOLDER_PASTE", "SPB");
    Add(matrix, "DRILL", "THROUGH", "TOP", "BOT");
    Add(matrix, "DRILL", "ALL");
    Add(matrix, "DRILL", "BLIND_TOP", "TOP", "GND");
    Add(matrix, "DRILL", "BLIND_BOT", "GND", "BOT");
    Add(matrix, "ROUT", "SLOT", "TOP", "GND");
    Add(matrix, "DOCUMENT", "NOTES");
    Add(matrix, "SIGNAL", "OTHER", "", "", "MISC");
    const struct
    {
        const char* one;
        const char* other;
    } kPairs[] = {
        {"comp_+_top", "comp_+_bot"}, {"top", "bot"}, {"gnd", "gnd"},     {"d1", "d2"},       {"smt", "smb"},
        {"through", "through"},       {"all", "all"}, {"notes", "notes"}, {"other", "other"}, {"unknown", "unknown"},
        {"blind_top", "blind_bot"}};
    for (const auto& each : kPairs)
    {
        EXPECT_EQ(Flipped(matrix, each.one), each.other);
        EXPECT_EQ(Flipped(matrix, each.other), each.one);
    }
    EXPECT_EQ(Flipped(matrix, "Top"), "bot");
    for (const char* const name : {"sst", "smt2", "spb", "slot"})
        EXPECT_EQ(Flipped(matrix, name), "none");
}
