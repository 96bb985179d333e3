#include "compact/CODB.h"

#include "compact/CompactMembers.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
constexpr double kMm = 1.0 / 25.4;

CODBlayer* AddLayer(CODB& odb, const char* name, const char* units = "INCH")
{
    auto* const layer = new CODBlayer;
    odb.m_arrLayers.Add(layer);
    layer->m_sName = name;
    layer->m_sUnits = units;
    auto* const line = new CODBlayObjLine;
    layer->m_arrFeatures.Add(line);
    line->m_ptEnd.SetData(25.4, 50.8);
    return layer;
}

CPointD EndOfLine(const CODBlayer& layer)
{
    return dynamic_cast<const CODBlayObjLine&>(*layer.m_arrFeatures.GetAt(0)).m_ptEnd;
}

void SetAllUnits(CODB& odb, const char* units)
{
    for (INT_PTR i = 0; i < odb.m_arrLayers.GetSize(); ++i)
        odb.m_arrLayers.GetAt(i)->m_sUnits = units;
    odb.m_pSingleLayer->m_sUnits = units;
    odb.m_pComponents->m_sUnits = units;
    for (INT_PTR i = 0; i < odb.m_arrSpecialSymbols.GetSize(); ++i)
        odb.m_arrSpecialSymbols.GetAt(i)->m_sUnits = units;
    odb.m_pData->m_sUnits = units;
}

void SetAllFactors(CODB& odb, double factor)
{
    for (INT_PTR i = 0; i < odb.m_arrLayers.GetSize(); ++i)
        odb.m_arrLayers.GetAt(i)->m_dRescaleFactor = factor;
    odb.m_pSingleLayer->m_dRescaleFactor = factor;
    odb.m_pComponents->m_dRescaleFactor = factor;
    for (INT_PTR i = 0; i < odb.m_arrSpecialSymbols.GetSize(); ++i)
        odb.m_arrSpecialSymbols.GetAt(i)->m_dRescaleFactor = factor;
    odb.m_pData->m_dRescaleFactor = factor;
}
} // namespace

TEST(CODB, RescaleFactorOfAUnit)
{
    const struct
    {
        const char* unit;
        double factor;
    } cases[] = {{"MM", 0.03937007874015748},
                 {"MIL", 0.001},
                 {"INCH", 1.0},
                 {"mm", 1.0},
                 {"mil", 1.0},
                 {"Mm", 1.0},
                 {" MM", 1.0},
                 {"MM ", 1.0},
                 {"UNITS=MM", 1.0},
                 {"", 1.0},
                 {"MILS", 1.0},
                 {"METRIC", 1.0}};
    for (const auto& [unit, factor] : cases)
        EXPECT_EQ(CODB::GetRescaleFactor(unit), factor) << unit;
    EXPECT_EQ(CODB::GetRescaleFactor("MM"), 1.0 / 25.4);
}

TEST(CODB, NumberOfAUnit)
{
    const struct
    {
        const char* unit;
        int number;
    } cases[] = {{"MM", 0}, {"INCH", 1}, {"MIL", 2}, {"mm", 1}, {"mil", 1}, {"", 1}, {"MM ", 1}, {"METRE", 1}};
    for (const auto& [unit, number] : cases)
        EXPECT_EQ(CODB::nChgSUnit2Int(unit), number) << unit;
}

TEST(CODB, SourceIsRecognisedExactlyOrByAPieceOfIt)
{
    const struct
    {
        const char* source;
        int none, expedition, cr8000;
    } cases[] = {
        {"", 1, 0, 0},
        {" ", 0, 0, 0},
        {"Expedition PCB", 0, 1, 0},
        {"Expedition PCB ", 0, 0, 0},
        {"The Expedition PCB", 0, 0, 0},
        {"expedition pcb", 0, 0, 0},
        {"Xpedition", 0, 1, 0},
        {"Tool Xpedition Layout 2.1", 0, 1, 0},
        {"xpedition", 0, 0, 0},
        {"EXPEDITION", 0, 0, 0},
        {"ZUKEN CR-8000 Design Force", 0, 0, 1},
        {"CR-8000", 0, 0, 1},
        {"something CR-8000/x", 0, 0, 1},
        {"cr-8000", 0, 0, 0},
        {"CR8000", 0, 0, 0},
        {"ZUKEN", 0, 0, 0},
        {"Xpedition and CR-8000", 0, 1, 1},
    };
    CODB odb;
    for (const auto& [source, none, expedition, cr8000] : cases)
    {
        odb.m_sSource = source;
        EXPECT_EQ(odb.IsSourceFromNoInformation(), none) << source;
        EXPECT_EQ(odb.IsSourceFromExpeditionPCB(), expedition) << source;
        EXPECT_EQ(odb.IsSourceFromCR8000DESIGNFORCE(), cr8000) << source;
    }
}

TEST(CODB, SourceBehindANulByteStillCounts)
{
    CODB odb;
    odb.m_sSource = CString("\0Xpedition", 10);
    EXPECT_EQ(odb.IsSourceFromNoInformation(), 0);
    EXPECT_EQ(odb.IsSourceFromExpeditionPCB(), 1);
}

TEST(CODB, StartsWithoutSingleLayerButWithComponentsAndData)
{
    const CODB odb;
    EXPECT_EQ(odb.m_pSingleLayer, nullptr);
    EXPECT_NE(odb.m_pComponents, nullptr);
    EXPECT_NE(odb.m_pData, nullptr);
    EXPECT_EQ(odb.IsSourceFromNoInformation(), 1);
}

TEST(CODB, UnitChange_RescalesEveryPartFromMm)
{
    CODB odb;
    Fill(odb);
    SetAllUnits(odb, "MM");
    const Members before = MembersOf(odb);
    odb.vChangeUnit(0);
    EXPECT_EQ(odb.m_pData->m_dRescaleFactor, kMm);
    for (INT_PTR i = 0; i < odb.m_arrSpecialSymbols.GetSize(); ++i)
        EXPECT_EQ(odb.m_arrSpecialSymbols.GetAt(i)->m_dRescaleFactor, kMm);

    // With all factors put alike on both sides, only lengths may differ.
    CODB same;
    Fill(same);
    SetAllUnits(same, "MM");
    SetAllFactors(same, kMm);
    std::vector<double> lengths = before.lengths;
    for (double& length : lengths)
        length *= kMm;
    EXPECT_FALSE(lengths.empty());
    EXPECT_EQ(MembersOf(odb).lengths, lengths);
    EXPECT_EQ(MembersOf(odb).others, MembersOf(same).others);
}

TEST(CODB, UnitChange_RescalesEveryPartByItsOwnUnit)
{
    CODB odb;
    const CODBlayer* const mm = AddLayer(odb, "top", "MM");
    const CODBlayer* const mil = AddLayer(odb, "inner", "MIL");
    const CODBlayer* const inch = AddLayer(odb, "bottom", "INCH");
    const CODBlayer* const unknown = AddLayer(odb, "drill", "mm");
    odb.m_pSingleLayer.reset(mm->clone());
    odb.m_pComponents->m_sUnits = "MIL";
    odb.m_pComponents->m_arrCmps.Add(new CODBcmp);
    odb.m_pComponents->m_arrCmps.GetAt(0)->m_ptLocation.SetData(1000.0, 2000.0);
    odb.m_pData->m_sUnits = "MM";
    odb.m_pData->m_arrPkgs.Add(new CODBdataPkg);
    odb.m_pData->m_arrPkgs.GetAt(0)->m_dPitch = 25.4;

    odb.vChangeUnit(1);

    EXPECT_EQ(EndOfLine(*mm), CPointD(25.4 * kMm, 50.8 * kMm));
    EXPECT_EQ(mm->m_dRescaleFactor, kMm);
    EXPECT_EQ(EndOfLine(*mil), CPointD(25.4 * 0.001, 50.8 * 0.001));
    EXPECT_EQ(mil->m_dRescaleFactor, 0.001);
    EXPECT_EQ(EndOfLine(*inch), CPointD(25.4, 50.8));
    EXPECT_EQ(inch->m_dRescaleFactor, 1.0);
    EXPECT_EQ(EndOfLine(*unknown), CPointD(25.4, 50.8));
    EXPECT_EQ(unknown->m_dRescaleFactor, 1.0);
    EXPECT_EQ(EndOfLine(*odb.m_pSingleLayer), CPointD(25.4 * kMm, 50.8 * kMm));
    EXPECT_EQ(odb.m_pSingleLayer->m_dRescaleFactor, kMm);
    EXPECT_EQ(odb.m_pComponents->m_arrCmps.GetAt(0)->m_ptLocation, CPointD(1.0, 2.0));
    EXPECT_EQ(odb.m_pComponents->m_dRescaleFactor, 0.001);
    EXPECT_EQ(odb.m_pData->m_arrPkgs.GetAt(0)->m_dPitch, 25.4 * kMm);
    EXPECT_EQ(odb.m_pData->m_dRescaleFactor, kMm);
}

TEST(CODB, UnitChange_OverwritesTheFactorAHostSet)
{
    CODB odb;
    CODBlayer* const layer = AddLayer(odb, "top", "INCH");
    layer->m_dRescaleFactor = 7.0;
    odb.vChangeUnit(0);
    EXPECT_EQ(layer->m_dRescaleFactor, 1.0);
    EXPECT_EQ(EndOfLine(*layer), CPointD(25.4, 50.8));
}

TEST(CODB, UnitChange_GivesSymbolsTheirFactorAndLeavesTheirFeatures)
{
    CODB odb;
    auto* const symbol = new CODBSpecialSymbol;
    odb.m_arrSpecialSymbols.Add(nullptr);
    odb.m_arrSpecialSymbols.Add(symbol);
    symbol->m_sUnits = "MM";
    symbol->m_layer.m_sUnits = "MM";
    auto* const pad = new CODBlayObjPad;
    symbol->m_layer.m_arrFeatures.Add(pad);
    pad->m_ptCenter.SetData(1.0, 2.0);

    odb.vChangeUnit(0);

    EXPECT_EQ(symbol->m_dRescaleFactor, kMm);
    EXPECT_EQ(symbol->m_layer.m_dRescaleFactor, 1.0);
    EXPECT_EQ(pad->m_ptCenter, CPointD(1.0, 2.0));
}

TEST(CODB, UnitChange_AlwaysGoesToInchWhateverTheArgument)
{
    for (const int argument : {0, 1, 2, -1, std::numeric_limits<int>::max()})
    {
        CODB odb;
        const CODBlayer* const layer = AddLayer(odb, "top", "MM");
        odb.vChangeUnit(argument);
        EXPECT_EQ(EndOfLine(*layer), CPointD(25.4 * kMm, 50.8 * kMm)) << argument;
        EXPECT_EQ(layer->m_sUnits, "MM");
    }
}

TEST(CODB, UnitChange_TwiceRescalesTwice)
{
    CODB odb;
    const CODBlayer* const layer = AddLayer(odb, "top", "MIL");
    odb.vChangeUnit(0);
    odb.vChangeUnit(0);
    EXPECT_EQ(EndOfLine(*layer), CPointD(25.4 * 0.001 * 0.001, 50.8 * 0.001 * 0.001));
}

TEST(CODB, UnitChange_SkipsAbsentPartsAndNullLayers)
{
    CODB odb;
    odb.m_pComponents.reset();
    odb.m_pData.reset();
    odb.m_arrLayers.Add(nullptr);
    const CODBlayer* const layer = AddLayer(odb, "top", "MM");
    odb.vChangeUnit(0);
    EXPECT_EQ(layer->m_dRescaleFactor, kMm);
    EXPECT_EQ(odb.m_pComponents, nullptr);
    EXPECT_EQ(odb.m_pData, nullptr);
}

TEST(CODB, LayerIsFoundByItsExactName)
{
    CODB odb;
    odb.m_pSingleLayer.reset(new CODBlayer);
    odb.m_pSingleLayer->m_sName = "profile";
    odb.m_arrLayers.Add(nullptr);
    const CODBlayer* const upper = AddLayer(odb, "TOP");
    const CODBlayer* const lower = AddLayer(odb, "top");
    AddLayer(odb, "top");
    EXPECT_EQ(odb.pGetODBlayerFromName("top"), lower);
    EXPECT_EQ(odb.pGetODBlayerFromName("TOP"), upper);
    EXPECT_EQ(odb.pGetODBlayerFromName("Top"), nullptr);
    EXPECT_EQ(odb.pGetODBlayerFromName(""), nullptr);
    EXPECT_EQ(odb.pGetODBlayerFromName("profile"), nullptr);
}

TEST(CODB, CopyKeepsAbsentPartsAbsent)
{
    CODB odb;
    odb.m_pData.reset();
    const CODB copy(odb);
    EXPECT_EQ(copy.m_pSingleLayer, nullptr);
    EXPECT_NE(copy.m_pComponents, nullptr);
    EXPECT_EQ(copy.m_pData, nullptr);

    CODB full;
    Fill(full);
    full = odb;
    EXPECT_EQ(full.m_pSingleLayer, nullptr);
    EXPECT_NE(full.m_pComponents, nullptr);
    EXPECT_EQ(full.m_pData, nullptr);
    EXPECT_EQ(full.m_arrLayers.GetSize(), 0);
}

TEST(CODB, PartIsHandedOver)
{
    CODB odb;
    CODBdata* const data = odb.m_pData.get();
    const std::unique_ptr<CODBdata> mine(odb.m_pData.release());
    EXPECT_EQ(mine.get(), data);
    EXPECT_EQ(odb.m_pData, nullptr);
}
