#include "change/ModelValues.h"
#include "change/SampleRead.h"
#include "support/TempDir.h"
#include "support/TestPaths.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <string>
#include <vector>

using namespace change_test;

namespace
{
constexpr const char* kNone = "$NONE$";

void Flatten(CJOBX& job, const char* step)
{
    const CJOBXresult result = FlattenStep(job, step);
    EXPECT_TRUE(result.IsDone()) << result.GetReason();
}

// Where the sample's panel has its five boards, worked out by hand: four of two columns and two rows, and one that is
// turned by 90 degrees clockwise.
CPointD OnPanel(int copy, const CPointD& point)
{
    constexpr std::array<std::array<double, 2>, 4> kPlaces = {{{0.4, 0.4}, {0.4, 1.55}, {2.15, 0.4}, {2.15, 1.55}}};
    if (copy == 5)
        return {3.9 + point.y, 2.275 - point.x};
    const auto& place = kPlaces.at(static_cast<std::size_t>(copy - 1));
    return {place[0] + point.x, place[1] + point.y};
}

int TurnedOnPanel(int copy, int orientation)
{
    if (copy != 5 || orientation >= 8) // these have an angle
        return orientation;
    return orientation < 4 ? (orientation + 1) % 4 : 4 + (orientation + 3) % 4;
}

bool IsNear(const CPointD& a, const CPointD& b)
{
    return std::abs(a.x - b.x) < 1e-9 && std::abs(a.y - b.y) < 1e-9;
}

// The first point of a feature.
CPointD PlaceOf(const CJOBXlayObj& feature)
{
    if (const auto* const pad = dynamic_cast<const CJOBXlayObjPad*>(&feature))
        return pad->GetCenterPoint();
    if (const auto* const line = dynamic_cast<const CJOBXlayObjLine*>(&feature))
        return line->GetStartPoint();
    if (const auto* const arc = dynamic_cast<const CJOBXlayObjArc*>(&feature))
        return arc->GetStartPoint();
    if (const auto* const text = dynamic_cast<const CJOBXlayObjText*>(&feature))
        return text->GetPosition();
    if (const auto* const barcode = dynamic_cast<const CJOBXlayObjBarcode*>(&feature))
        return barcode->m_ptPosition;
    const auto& surface = dynamic_cast<const CJOBXlayObjSurface&>(feature);
    return surface.GetContours()->GetAt(0)->GetODBlayObjOXArray()->GetAt(0)->GetPoint();
}

// What the feature is drawn with, and its attributes.
std::string LooksOf(const CJOBXlayer& layer, const CJOBXlayObj& feature)
{
    std::string looks = Plain(feature.GetType()) + Plain(feature.GetPolarity());
    if (feature.GetSymbolNumber() >= 0)
        looks += Plain(layer.GetSymbolName(feature.GetSymbolNumber()));
    for (int i = 0; i < feature.nGetPropertyCount(); ++i)
    {
        const CJOBXProperty& attribute = *feature.pGetProperty(i);
        looks += ' ' + Plain(attribute.m_sName) + '=' + Plain(attribute.m_sValue);
        EXPECT_EQ(layer.GetAttributeName(attribute.m_nNumber), attribute.m_sName);
        if (attribute.GetKind() == JOBXattributeKind::Text)
        {
            EXPECT_EQ(layer.GetAttributeText(attribute.m_nTextNumber), attribute.m_sValue);
        }
    }
    return looks;
}

CJOBXlayer& LayerOf(const CJOBXstepObj& step, const char* name)
{
    return *step.ScanLayerObjDataInLayer(name);
}

const CJOBXlayObj* FeatureOf(CJOBXstepObj& step, const CJOBXdataNetObj& object)
{
    const CString name = DataOf(step).m_arrLayerNames[object.m_nLayerIndex];
    return LayerOf(step, name.GetString()).GetFeatures()->GetAt(object.m_nFeatureIndex);
}

// A made-up job: the step "pcb" and a panel with these step-repeats.
struct MadeUpJob
{
    explicit MadeUpJob(const std::string& repeats, const std::string& panelUnits = "UNITS=INCH\n")
    {
        dir.Write("matrix/matrix",
                  "STEP {\nCOL=1\nNAME=PCB\n}\nSTEP {\nCOL=2\nNAME=PANEL\n}\nSTEP {\nCOL=3\nNAME=TRAY\n}\n" +
                      Row(1, "COMPONENT", "COMP_+_TOP") + Row(2, "SILK_SCREEN", "SST") + Row(3, "SIGNAL", "TOP") +
                      Row(4, "SIGNAL", "BOT") + Row(5, "DRILL", "DRILL"));
        for (const char* const step : {"pcb", "panel", "tray"})
            dir.Write(std::string("steps/") + step + "/profile", "S P 0\nOB 0 0 I\nOS 0 1\nOS 1 1\nOE\nSE\n");
        dir.Write("steps/pcb/stephdr", "UNITS=INCH\nX_DATUM=0.5\nY_DATUM=0.25\n");
        dir.Write("steps/panel/stephdr", panelUnits + repeats);
        dir.Write("steps/tray/stephdr", "UNITS=INCH\n" + Repeat("PANEL", 10, 20, 1, 1, 90));
        dir.Write("steps/panel/layers/top/features", panelUnits + "$0 r5\n@0 .smd\nP 0 0 0 P 0 0;0\n");
        dir.Write("steps/pcb/layers/top/features",
                  "UNITS=INCH\n$4 r10\n$5 mine\n@3 .geometry\n@4 .smd\n@5 .depth\n&7 a text\n"
                  "P 1 2 4 P 0 1;3=7,4;ID=5\nP 1 1 5 P 0 8 30;5=0.1\n");
        dir.Write("steps/pcb/layers/bot/features", "UNITS=INCH\n$0 r20\nP 1 2 0 P 0 4\n");
        dir.Write("steps/pcb/layers/drill/features", "UNITS=INCH\n$0 r12\nP 1 2 0 P 0 0\n");
        dir.Write("steps/pcb/layers/drill/tools",
                  "UNITS=INCH\nTHICKNESS=62\nTOOLS {\nNUM=1\nTYPE=VIA\nFINISH_SIZE=10\nDRILL_SIZE=12\n}\n");
        dir.Write("steps/pcb/eda/data",
                  "UNITS=INCH\nHDR here\nLYR top bot drill\nNET $NONE$\nSNT TRC\nFID C 1 0\nNET A\nSNT TOP T 0 0\n"
                  "FID C 0 0\nFID H 2 0\nSNT TOP B 0 0\nFID C 1 0\nPKG P 0.1 -1 -1 1 1\nPIN 1 S 0.5 0 0 E S\n");
        dir.Write("steps/pcb/layers/comp_+_top/components",
                  "UNITS=INCH\n@0 .comp_height\nCMP 0 1 2 30 N R1 P ;0=0.1\nTOP 0 1.5 2 30 N 1 0 1\n");
        dir.Write("steps/pcb/layers/comp_+_bot/components",
                  "UNITS=INCH\nCMP 0 1 2 30 M R2 P\nTOP 0 0.5 2 30 M 1 1 1\n");
        dir.Write("steps/pcb/netlists/cadnet/netlist",
                  "UNITS=INCH\n$0 $NONE$\n$1 A\n0 0 1 2 B 0.1 0.2 e e\n"
                  "1 0.1 1 2 T e e staggered 3 4 0.5\n1 0.1 1 2 D e e staggered 0 0 0\n");
        dir.Write("steps/pcb/netlists/refnet/netlist", "UNITS=INCH\n$0 A\n0 0.1 1 2 T e e\n");
        job = ReadCompletely(dir.Path());
    }

    static std::string Row(int row, const char* type, const char* name)
    {
        return "LAYER {\nROW=" + std::to_string(row) + "\nCONTEXT=BOARD\nTYPE=" + type + "\nNAME=" + name +
               "\nPOLARITY=POSITIVE\n}\n";
    }
    static std::string Repeat(const char* name, double x, double y, int columns = 1, int rows = 1, double angle = 0,
                              const char* mirror = "NO", const char* flip = "NO")
    {
        return "STEP-REPEAT {\nNAME=" + std::string(name) + "\nX=" + std::to_string(x) + "\nY=" + std::to_string(y) +
               "\nDX=3\nDY=4\nNX=" + std::to_string(columns) + "\nNY=" + std::to_string(rows) +
               "\nANGLE=" + std::to_string(angle) + "\nMIRROR=" + mirror + "\nFLIP=" + flip + "\n}\n";
    }
    CJOBXstepObj& Step(const char* name) const { return StepOf(*job, name); }
    // The features of a layer of the panel as "x y orientation symbol".
    Strings Pads(const char* step, const char* layer) const
    {
        Strings pads;
        const CJOBXlayer& found = LayerOf(Step(step), layer);
        for (const CJOBXlayObj& feature : found.GetFeatures()->Records())
        {
            const auto& pad = dynamic_cast<const CJOBXlayObjPad&>(feature);
            pads.push_back(Plain(NumberText(pad.GetCenterPoint().x)) + ' ' + Plain(NumberText(pad.GetCenterPoint().y)) +
                           ' ' + std::to_string(pad.GetOrientation()) +
                           (pad.GetOrientation() > 7 ? ' ' + Plain(NumberText(pad.GetRotationAngle())) : "") + ' ' +
                           Plain(found.GetSymbolName(pad.GetSymbolNumber())));
        }
        return pads;
    }
    static CString NumberText(double number)
    {
        CString text;
        text.Format("%.10g", number);
        return text;
    }

    TempDir dir;
    std::unique_ptr<CJOBX> job;
};

void ExpectRefused(const std::string& repeats, const char* reason)
{
    const MadeUpJob made(repeats);
    const ModelValues before = ValuesOf(*made.job);
    const CJOBXresult result = FlattenStep(*made.job, "panel");
    EXPECT_FALSE(result.IsDone());
    EXPECT_EQ(Plain(result.GetReason()), reason);
    ExpectSameValues(ValuesOf(*made.job), before);
}
} // namespace

TEST(StepFlattening, PlacesEveryFeatureOfTheSamplesPanel)
{
    const auto flat = ReadSample();
    const auto before = ReadSample();
    Flatten(*flat, "panel");
    const CJOBXstepObj& panel = StepOf(*flat, "PANEL");
    const CJOBXstepObj& board = StepOf(*before, "PCB");
    EXPECT_EQ(panel.m_arrLayers.GetSize(), board.m_arrLayers.GetSize());
    for (const CJOBXlayer& layer : board.m_arrLayers.Records())
    {
        const CJOBXlayer& placed = LayerOf(panel, layer.m_sName.GetString());
        const CJOBXlayer* const own = StepOf(*before, "PANEL").ScanLayerObjDataInLayer(layer.m_sName);
        const __int64 first = own == nullptr ? 0 : own->GetFeatures()->GetSize();
        const __int64 count = layer.GetFeatures()->GetSize();
        ASSERT_EQ(placed.GetFeatures()->GetSize(), first + 5 * count) << layer.m_sName.GetString();
        for (__int64 i = 0; i < 5 * count; ++i)
        {
            const CJOBXlayObj& original = *layer.GetFeatures()->GetAt(i % count);
            const CJOBXlayObj& copy = *placed.GetFeatures()->GetAt(first + i);
            const int number = static_cast<int>(i / count) + 1;
            EXPECT_EQ(copy.GetFeatureIndex(), first + i);
            EXPECT_EQ(LooksOf(placed, copy), LooksOf(layer, original));
            const auto* const pad = dynamic_cast<const CJOBXlayObjPad*>(&original);
            if (pad != nullptr)
            {
                const auto& placedPad = dynamic_cast<const CJOBXlayObjPad&>(copy);
                const bool isByAngle = number == 5 && pad->GetOrientation() >= 8;
                const double more = !isByAngle ? 0.0 : pad->GetOrientation() == 8 ? 90.0 : 270.0;
                EXPECT_EQ(placedPad.GetOrientation(), TurnedOnPanel(number, pad->GetOrientation()));
                EXPECT_EQ(placedPad.GetRotationAngle(), std::fmod(pad->GetRotationAngle() + more, 360.0));
            }
            EXPECT_TRUE(IsNear(PlaceOf(copy), OnPanel(number, PlaceOf(original))))
                << layer.m_sName.GetString() << ' ' << i;
        }
    }
}

TEST(StepFlattening, LeavesTheRestOfTheSampleAlone)
{
    const auto flat = ReadSample();
    const auto before = ReadSample();
    Flatten(*flat, "PANEL");
    ExpectSameValues(ValuesOf(StepOf(*flat, "PCB")), ValuesOf(StepOf(*before, "PCB")));
    ExpectSameValues(ValuesOf(*StepOf(*flat, "PANEL").GetProfile()), ValuesOf(*StepOf(*before, "PANEL").GetProfile()));
    EXPECT_EQ(StepOf(*flat, "PANEL").GetHeader()->m_arrStepRepeats.GetSize(), 0);
    EXPECT_EQ(LayersOfMatrix(*flat), LayersOfMatrix(*before));
    const CJOBXlayer& top = LayerOf(StepOf(*before, "PANEL"), "top");
    const CJOBXlayer& flatTop = LayerOf(StepOf(*flat, "PANEL"), "top");
    for (__int64 i = 0; i < top.GetFeatures()->GetSize(); ++i)
        EXPECT_EQ(LooksOf(flatTop, *flatTop.GetFeatures()->GetAt(i)), LooksOf(top, *top.GetFeatures()->GetAt(i)));
}

TEST(StepFlattening, LetsNetsLeadToTheFeaturesAndComponentsOfTheirCopy)
{
    const auto flat = ReadSample();
    const auto before = ReadSample();
    Flatten(*flat, "panel");
    CJOBXstepObj& panel = StepOf(*flat, "PANEL");
    CJOBXstepObj& board = StepOf(*before, "PCB");
    const __int64 count = DataOf(board).m_arrNets.GetSize() - 1; // without the one of everything in no net
    ASSERT_EQ(DataOf(panel).m_arrNets.GetSize(), 5 * count + 1);
    EXPECT_EQ(DataOf(panel).m_arrNets.GetAt(0)->m_sName, kNone);
    EXPECT_EQ(DataOf(panel).m_arrNets.GetAt(0)->m_arrSnts.GetSize(),
              5 * DataOf(board).m_arrNets.GetAt(0)->m_arrSnts.GetSize());
    int compared = 0;
    for (int copy = 1; copy <= 5; ++copy)
        for (__int64 i = 1; i <= count; ++i)
        {
            const CJOBXdataNet& net = *DataOf(board).m_arrNets.GetAt(i);
            const CJOBXdataNet& placed = *DataOf(panel).m_arrNets.GetAt((copy - 1) * count + i);
            ASSERT_EQ(Plain(placed.m_sName), Plain(net.m_sName) + '#' + std::to_string(copy));
            ASSERT_EQ(placed.m_arrSnts.GetSize(), net.m_arrSnts.GetSize());
            for (__int64 k = 0; k < net.m_arrSnts.GetSize(); ++k)
            {
                const CJOBXSnt& subnet = *net.m_arrSnts.GetAt(k);
                const CJOBXSnt& placedSubnet = *placed.m_arrSnts.GetAt(k);
                for (__int64 m = 0; m < subnet.m_arrNetObjs.GetSize(); ++m, ++compared)
                    ASSERT_TRUE(IsNear(PlaceOf(*FeatureOf(panel, *placedSubnet.m_arrNetObjs.GetAt(m))),
                                       OnPanel(copy, PlaceOf(*FeatureOf(board, *subnet.m_arrNetObjs.GetAt(m))))));
                if (subnet.m_sKind != "TOP")
                    continue;
                const char* const file = subnet.m_sSide == "T" ? "comp_+_top" : "comp_+_bot";
                const auto* const part = ComponentsOf(board, file)->m_arrCmps.GetAt(subnet.m_nComponentNumber);
                const auto* const copied = ComponentsOf(panel, file)->m_arrCmps.GetAt(placedSubnet.m_nComponentNumber);
                ASSERT_EQ(Plain(copied->m_sName), Plain(part->m_sName) + '#' + std::to_string(copy));
                ASSERT_EQ(placedSubnet.m_sSide, subnet.m_sSide);
            }
        }
    EXPECT_GT(compared, 500);
}

TEST(StepFlattening, LetsComponentsKeepPackagesPinsAndNets)
{
    const auto flat = ReadSample();
    const auto before = ReadSample();
    Flatten(*flat, "panel");
    CJOBXstepObj& panel = StepOf(*flat, "PANEL");
    CJOBXstepObj& board = StepOf(*before, "PCB");
    EXPECT_EQ(DataOf(panel).m_arrPkgs.GetSize(), DataOf(board).m_arrPkgs.GetSize());
    for (const char* const file : {"comp_+_top", "comp_+_bot"})
    {
        const CJOBXcmpArray& parts = ComponentsOf(board, file)->m_arrCmps;
        const CJOBXcmpArray& copies = ComponentsOf(panel, file)->m_arrCmps;
        ASSERT_EQ(copies.GetSize(), 5 * parts.GetSize());
        for (__int64 i = 0; i < copies.GetSize(); ++i)
        {
            const int copy = static_cast<int>(i / parts.GetSize()) + 1;
            const CJOBXcmp& part = *parts.GetAt(i % parts.GetSize());
            const CJOBXcmp& placed = *copies.GetAt(i);
            const bool isBottom = file == std::string("comp_+_bot");
            const double turned = std::fmod(part.m_dRotation + (copy != 5 ? 0.0 : isBottom ? 270.0 : 90.0), 360.0);
            EXPECT_EQ(placed.m_dRotation, turned);
            EXPECT_EQ(placed.m_nMirror, part.m_nMirror);
            EXPECT_TRUE(IsNear(placed.m_ptLocation, OnPanel(copy, part.m_ptLocation)));
            EXPECT_EQ(DataOf(panel).m_arrPkgs.GetAt(placed.m_nPkgRef)->m_sName,
                      DataOf(board).m_arrPkgs.GetAt(part.m_nPkgRef)->m_sName);
            ASSERT_EQ(placed.m_arrTops.GetSize(), part.m_arrTops.GetSize());
            for (__int64 k = 0; k < part.m_arrTops.GetSize(); ++k)
            {
                const CJOBXcmpTop& top = *part.m_arrTops.GetAt(k);
                const CJOBXcmpTop& copied = *placed.m_arrTops.GetAt(k);
                EXPECT_EQ(copied.m_nPin, top.m_nPin);
                EXPECT_TRUE(IsNear(copied.m_ptLocation, OnPanel(copy, top.m_ptLocation)));
                // The subnet of the pin leads back to it.
                const CJOBXSnt& subnet =
                    *DataOf(panel).m_arrNets.GetAt(copied.m_nNet)->m_arrSnts.GetAt(copied.m_nSubnet);
                EXPECT_EQ(subnet.m_nComponentNumber, i);
                EXPECT_EQ(subnet.m_nToeprintNumber, k);
            }
        }
    }
}

TEST(StepFlattening, PlacesNetlistPoints)
{
    const auto flat = ReadSample();
    const auto before = ReadSample();
    Flatten(*flat, "panel");
    const CJOBXnetArray& placed = StepOf(*flat, "PANEL").GetNetlist()->m_arrNets;
    const CJOBXnetArray& nets = StepOf(*before, "PCB").GetNetlist()->m_arrNets;
    const __int64 count = nets.GetSize() - 1;
    ASSERT_EQ(placed.GetSize(), 5 * count + 1);
    for (__int64 i = 0; i < placed.GetSize(); ++i)
    {
        EXPECT_EQ(placed.GetAt(i)->m_nNumber, i);
        EXPECT_EQ(placed.GetAt(i)->m_sName, DataOf(StepOf(*flat, "PANEL")).m_arrNets.GetAt(i)->m_sName);
    }
    for (int copy = 1; copy <= 5; ++copy)
        for (__int64 i = 1; i <= count; ++i)
        {
            const CJOBXnetPtArray& points = nets.GetAt(i)->m_arrPts;
            const CJOBXnetPtArray& copies = placed.GetAt((copy - 1) * count + i)->m_arrPts;
            ASSERT_EQ(copies.GetSize(), points.GetSize());
            for (__int64 k = 0; k < points.GetSize(); ++k)
            {
                EXPECT_TRUE(IsNear(copies.GetAt(k)->m_ptPosition, OnPanel(copy, points.GetAt(k)->m_ptPosition)));
                EXPECT_EQ(copies.GetAt(k)->m_dWidth,
                          copy == 5 ? points.GetAt(k)->m_dHeight : points.GetAt(k)->m_dWidth);
                EXPECT_EQ(copies.GetAt(k)->m_sSide, points.GetAt(k)->m_sSide);
            }
        }
}

TEST(StepFlattening, TurnsAndMirrorsAboutTheDatum)
{
    // (1, 2) is (0.5, 1.75) from the datum: turned by 90 it is (1.75, -0.5), mirrored then (-1.75, -0.5).
    const MadeUpJob made(MadeUpJob::Repeat("PCB", 10, 20, 1, 1, 90) +
                         MadeUpJob::Repeat("PCB", 10, 20, 1, 1, 90, "YES") +
                         MadeUpJob::Repeat("PCB", 10, 20, 1, 1, 0, "YES"));
    Flatten(*made.job, "PANEL");
    EXPECT_EQ(made.Pads("PANEL", "top"),
              (Strings{"0 0 0 r5", "11.75 19.5 2 r10", "10.75 19.5 8 120 mine", "8.25 19.5 6 r10",
                       "9.25 19.5 9 120 mine", "9.5 21.75 5 r10", "9.5 20.75 9 30 mine"}));
    EXPECT_EQ(made.Pads("PANEL", "bot"), (Strings{"11.75 19.5 7 r20", "8.25 19.5 3 r20", "9.5 21.75 0 r20"}));
}

TEST(StepFlattening, ExchangesTheSidesOfAFlippedBoard)
{
    const MadeUpJob made(MadeUpJob::Repeat("PCB", 10, 20, 1, 1, 90, "YES", "YES"));
    Flatten(*made.job, "PANEL");
    EXPECT_EQ(made.Pads("PANEL", "bot"), (Strings{"8.25 19.5 6 r10", "9.25 19.5 9 120 mine"}));
    EXPECT_EQ(made.Pads("PANEL", "top"), (Strings{"0 0 0 r5", "8.25 19.5 3 r20"}));
    EXPECT_EQ(made.Pads("PANEL", "drill"), (Strings{"8.25 19.5 5 r12"}));
    CJOBXstepObj& panel = made.Step("PANEL");
    const CJOBXcmp& bottom = *ComponentsOf(panel, "comp_+_bot")->m_arrCmps.GetAt(0);
    const CJOBXcmp& top = *ComponentsOf(panel, "comp_+_top")->m_arrCmps.GetAt(0);
    EXPECT_EQ(bottom.m_sName, "R1#1");
    EXPECT_EQ(bottom.m_dRotation, 120); // on the bottom: turned by 120, then mirrored
    EXPECT_EQ(bottom.m_nMirror, 1);
    EXPECT_EQ(top.m_sName, "R2#1");
    EXPECT_EQ(top.m_dRotation, 300);
    EXPECT_EQ(top.m_nMirror, 0);
    // The package's pin is half an inch to the right: turned by 120 clockwise (-0.25, -0.433), mirrored (0.25, -0.433).
    EXPECT_TRUE(IsNear(bottom.m_ptLocation, {8.25, 19.5}));
    EXPECT_EQ(LayersOfMatrix(*made.job).back(), "6 COMP_+_BOT");
    const CJOBXdataNet& net = *DataOf(panel).m_arrNets.GetAt(1);
    EXPECT_EQ(net.m_sName, "A#1");
    EXPECT_EQ(net.m_arrSnts.GetAt(0)->m_sSide, "B");
    EXPECT_EQ(net.m_arrSnts.GetAt(1)->m_sSide, "T");
    EXPECT_TRUE(IsNear(PlaceOf(*FeatureOf(panel, *net.m_arrSnts.GetAt(0)->m_arrNetObjs.GetAt(0))), {8.25, 19.5}));
    EXPECT_EQ(FeatureOf(panel, *net.m_arrSnts.GetAt(0)->m_arrNetObjs.GetAt(0)),
              LayerOf(panel, "bot").GetFeatures()->GetAt(0));
    EXPECT_EQ(FeatureOf(panel, *net.m_arrSnts.GetAt(1)->m_arrNetObjs.GetAt(0)),
              LayerOf(panel, "top").GetFeatures()->GetAt(1));
    const CJOBXnetArray& nets = panel.GetNetlist()->m_arrNets;
    EXPECT_EQ(nets.GetAt(0)->m_arrPts.GetAt(0)->m_sSide, "T");
    EXPECT_EQ(nets.GetAt(1)->m_arrPts.GetAt(0)->m_sSide, "B");
    EXPECT_EQ(nets.GetAt(1)->m_arrPts.GetAt(1)->m_sSide, "D");
    EXPECT_TRUE(IsNear(nets.GetAt(1)->m_arrPts.GetAt(0)->m_ptStaggeredPosition, {10 - 3.75, 20 - 2.5}));
    EXPECT_TRUE(IsNear(nets.GetAt(1)->m_arrPts.GetAt(1)->m_ptStaggeredPosition, {0, 0}));
}

TEST(StepFlattening, KeepsMirrorFlagsWhereTheBottomHasNone)
{
    const MadeUpJob made(MadeUpJob::Repeat("PCB", 0, 0, 1, 1, 0, "YES", "YES"));
    ComponentsOf(made.Step("PCB"), "comp_+_bot")->m_arrCmps.GetAt(0)->m_nMirror = 0;
    Flatten(*made.job, "PANEL");
    EXPECT_EQ(ComponentsOf(made.Step("PANEL"), "comp_+_bot")->m_arrCmps.GetAt(0)->m_nMirror, 0);
}

TEST(StepFlattening, PlacesWhatPlacedStepsRepeat)
{
    // The panel lies at (10, 20), turned by 90; in it the board at (1, 2), mirrored: (x, y) becomes (1.5 - x, 1.75 + y) in
    // the panel, then (10 + 1.75 + y, 20 - 1.5 + x).
    const MadeUpJob made(MadeUpJob::Repeat("PCB", 1, 2, 1, 1, 0, "YES", "NO"));
    Flatten(*made.job, "TRAY");
    EXPECT_EQ(made.Pads("TRAY", "top"), (Strings{"10 20 1 r5", "13.75 19.5 4 r10", "12.75 19.5 9 300 mine"}));
    EXPECT_EQ(DataOf(made.Step("TRAY")).m_arrNets.GetAt(1)->m_sName, "A#2"); // the panel is the first placement
    EXPECT_EQ(made.Step("PANEL").GetHeader()->m_arrStepRepeats.GetSize(), 1);
}

TEST(StepFlattening, MergesTablesToolsAndPackages)
{
    const MadeUpJob made(MadeUpJob::Repeat("PCB", 0, 0, 2, 2));
    Flatten(*made.job, "PANEL");
    CJOBXstepObj& panel = made.Step("PANEL");
    const CJOBXlayer& top = LayerOf(panel, "top");
    EXPECT_EQ(top.m_arrSymbolNames, Texts({"r5", "r10", "mine"}));
    EXPECT_EQ(top.m_arrAttributeNames, Texts({".smd", ".geometry", ".depth"}));
    EXPECT_EQ(top.m_arrAttributeTexts, Texts({"a text"}));
    EXPECT_EQ(top.GetFeatures()->GetSize(), 9);
    EXPECT_EQ(LooksOf(top, *top.GetFeatures()->GetAt(7)), "PPr10 .geometry=a text .smd=");
    EXPECT_EQ(top.GetFeatures()->GetAt(7)->GetID(), CJOBXidentified::kNoID);
    EXPECT_EQ(LayerOf(panel, "drill").GetTool()->m_arrToolData.GetSize(), 1);
    EXPECT_EQ(LayerOf(panel, "drill").GetTool()->m_dThickness, 62);
    EXPECT_EQ(DataOf(panel).m_arrPkgs.GetSize(), 1);
    EXPECT_EQ(DataOf(panel).m_arrLayerNames, Texts({"top", "bot", "drill"}));
    EXPECT_EQ(DataOf(panel).m_arrNets.GetSize(), 5);
    EXPECT_EQ(DataOf(panel).m_arrNets.GetAt(0)->m_arrSnts.GetSize(), 4);
    ASSERT_EQ(panel.pGetFurtherNetlists()->GetSize(), 1);
    EXPECT_EQ(panel.pGetFurtherNetlists()->GetAt(0)->GetName(), "refnet");
    EXPECT_EQ(panel.pGetFurtherNetlists()->GetAt(0)->m_arrNets.GetSize(), 4);
}

TEST(StepFlattening, ConvertsBoardsInAnotherUnit)
{
    // The panel is in mm, the board at (25.4, 50.8) mm, its datum half an inch and a quarter inside.
    const MadeUpJob made(MadeUpJob::Repeat("PCB", 25.4, 50.8), "UNITS=MM\n");
    Flatten(*made.job, "PANEL");
    EXPECT_EQ(made.Pads("PANEL", "top"), (Strings{"0 0 0 r5", "38.1 95.25 1 r254", "38.1 69.85 8 30 mine"}));
    CJOBXstepObj& panel = made.Step("PANEL");
    EXPECT_EQ(LayerOf(panel, "top").GetFeatures()->GetAt(2)->pGetProperty(0)->m_sValue, "2.54");
    EXPECT_EQ(LayerOf(panel, "bot").GetUnit(), JOBXunit::Millimetre);
    EXPECT_EQ(DataOf(panel).GetUnit(), JOBXunit::Millimetre);
    EXPECT_EQ(DataOf(panel).m_arrPkgs.GetAt(0)->m_dPitch, 2.54);
    EXPECT_EQ(DataOf(panel).m_arrPkgs.GetAt(0)->m_arrPins.GetAt(0)->m_ptCenter, CPointD(12.7, 0));
    const CJOBXcomponents& parts = *ComponentsOf(panel, "comp_+_top");
    EXPECT_EQ(parts.m_arrCmps.GetAt(0)->m_ptLocation, CPointD(38.1, 95.25));
    EXPECT_EQ(parts.m_arrCmps.GetAt(0)->m_arrAttributes.GetAt(0)->m_sValue, "2.54");
    EXPECT_EQ(panel.GetNetlist()->m_arrNets.GetAt(1)->m_arrPts.GetAt(0)->m_dRadius, 2.54);
    EXPECT_EQ(LayerOf(panel, "drill").GetTool()->m_arrToolData.GetAt(0)->m_dDrillSize, 12); // mils, as its file says
}

TEST(StepFlattening, RefusesWhatCannotBePlacedAndChangesNothing)
{
    ExpectRefused(MadeUpJob::Repeat("PANEL", 0, 0), R"(step "PANEL" cannot be flattened: step "PANEL" repeats itself)");
    ExpectRefused(MadeUpJob::Repeat("TRAY", 0, 0), R"(step "PANEL" cannot be flattened: step "PANEL" repeats itself)");
    ExpectRefused(MadeUpJob::Repeat("NEW", 0, 0),
                  R"(step "PANEL" cannot be flattened: step "NEW" is repeated but not in the job)");
    ExpectRefused(MadeUpJob::Repeat("PCB", 0, 0, 1000, 101),
                  R"(step "PANEL" cannot be flattened: it has more than 100000 placements)");
    ExpectRefused(MadeUpJob::Repeat("PCB", 0, 0, 2147483647, 2147483647),
                  R"(step "PANEL" cannot be flattened: it has more than 100000 placements)");
    const MadeUpJob made(MadeUpJob::Repeat("PCB", 0, 0, 1, 1, 0, "NO", "YES"));
    made.Step("PCB").m_arrLayers.GetAt(0)->m_sName = "sst";
    EXPECT_EQ(Plain(FlattenStep(*made.job, "PANEL").GetReason()),
              R"(step "PANEL" cannot be flattened: layer "sst" of step "PCB" is flipped but has no counterpart on the )"
              "other side");
    EXPECT_EQ(Plain(FlattenStep(*made.job, "NEW").GetReason()), R"(no step is called "NEW")");
    made.job->SetReading({});
    EXPECT_EQ(Plain(FlattenStep(*made.job, "PANEL").GetReason()), "the job was not read completely");
}

TEST(StepFlattening, LeavesAStepWithoutStepRepeatsAsItIs)
{
    const MadeUpJob made("");
    const ModelValues before = ValuesOf(*made.job);
    Flatten(*made.job, "PCB");
    ExpectSameValues(ValuesOf(*made.job), before);
}
