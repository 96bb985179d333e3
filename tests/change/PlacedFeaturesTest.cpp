#include "change/PlacedFeatures.h"

#include "layer/CJOBXlayObj.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <memory>
#include <string>

namespace
{
using Matrix = std::array<double, 4>; // x' = 0 x + 1 y, y' = 2 x + 3 y

// Clockwise, then mirrored.
Matrix MatrixOf(double degrees, bool isMirrored)
{
    const double angle = degrees * std::acos(-1.0) / 180.0;
    const double sign = isMirrored ? -1.0 : 1.0;
    return {sign * std::cos(angle), sign * std::sin(angle), -std::sin(angle), std::cos(angle)};
}

Matrix MatrixOfCode(int code, double angle)
{
    const bool isMirrored = code == 9 || (code >= 4 && code < 8);
    return MatrixOf(code < 8 ? (code % 4) * 90.0 : angle, isMirrored);
}

Matrix Product(const Matrix& a, const Matrix& b)
{
    return {a[0] * b[0] + a[1] * b[2], a[0] * b[1] + a[1] * b[3], a[2] * b[0] + a[3] * b[2], a[2] * b[1] + a[3] * b[3]};
}

CPlacedFile Placed(double angle, bool isMirrored, double x = 0.0, double y = 0.0)
{
    return {{{angle, isMirrored}, false, {x, y}}, JOBXunit::Inch, JOBXunit::Inch, JOBXunit::Inch};
}

void Add(CJOBXlayObjOXArray& elements, const char* kind, double x, double y)
{
    auto element = std::make_unique<CJOBXlayObjOX>();
    element->SetKind(kind);
    element->SetPoint({x, y});
    elements.Own(std::move(element));
}

// A quarter of a disk around (0, 0), clockwise: from (0, 1) by an arc to (1, 0), to the centre, and back.
std::unique_ptr<CJOBXlayObjSurface> QuarterDisk()
{
    auto surface = std::make_unique<CJOBXlayObjSurface>();
    surface->SetType("S");
    CJOBXlayObjOXArray& elements =
        *surface->GetContours()->Own(std::make_unique<CJOBXlayObjSurfaceOB>())->GetODBlayObjOXArray();
    Add(elements, "OB", 0, 1);
    Add(elements, "OC", 1, 0);
    Add(elements, "OS", 0, 0);
    Add(elements, "OS", 0, 1);
    Add(elements, "OE", 0, 0);
    elements.GetAt(0)->SetPolygonType("I");
    elements.GetAt(1)->SetClockwise("Y");
    return surface;
}

std::string TextOf(const CJOBXlayObj& feature)
{
    std::string text;
    const auto& surface = dynamic_cast<const CJOBXlayObjSurface&>(feature);
    const auto& elements = *surface.GetContours()->GetAt(0)->GetODBlayObjOXArray();
    for (const CJOBXlayObjOX& element : elements.Records())
    {
        text += std::string(element.GetKind().View());
        if (element.GetKind() != "OE")
            text += ' ' + std::to_string(std::lround(element.GetPoint().x)) + ' ' +
                    std::to_string(std::lround(element.GetPoint().y));
        if (element.GetKind() == "OC")
            text += ' ' + std::to_string(std::lround(element.GetCenterPoint().x)) + ' ' +
                    std::to_string(std::lround(element.GetCenterPoint().y));
        text += std::string(element.GetPolygonType().View()) + std::string(element.GetClockwise().View()) + "; ";
    }
    return text;
}
} // namespace

TEST(TurnOrientation, GivesTheCodeOfBothTransformationsTogether)
{
    for (const double turn : {0.0, 90.0, 180.0, 270.0, 30.0, 359.5})
        for (const bool isMirrored : {false, true})
            for (int code = 0; code <= 9; ++code)
                for (const double angle : {0.0, 30.0, 60.0, 90.0, 200.0, -15.0})
                {
                    int turned = code;
                    double turnedAngle = code < 8 ? 0.0 : angle;
                    TurnOrientation({turn, isMirrored}, turned, turnedAngle);
                    const Matrix expected = Product(MatrixOf(turn, isMirrored), MatrixOfCode(code, angle));
                    const Matrix actual = MatrixOfCode(turned, turnedAngle);
                    for (std::size_t i = 0; i < 4; ++i)
                        EXPECT_NEAR(actual.at(i), expected.at(i), 1e-9)
                            << "code " << code << ' ' << angle << " by " << turn << (isMirrored ? " mirrored" : "");
                    EXPECT_TRUE(turned >= 8 || turnedAngle == 0.0);
                }
}

TEST(TurnOrientation, WritesRightAnglesWithoutAnAngle)
{
    int code = 8;
    double angle = 60.0;
    TurnOrientation({30.0, false}, code, angle);
    EXPECT_EQ(code, 1);
    EXPECT_EQ(angle, 0.0);
    TurnOrientation({45.0, true}, code, angle);
    EXPECT_EQ(code, 9);
    EXPECT_EQ(angle, 135.0);
    code = 12;
    TurnOrientation({90.0, true}, code, angle);
    EXPECT_EQ(code, 12);
}

TEST(PlacedCopy, TurnsMirrorsAndMovesPoints)
{
    CJOBXlayObjLine line;
    line.SetType("L");
    line.SetStartPoint({1, 2});
    line.SetEndPoint({3, 5});
    const auto turned = PlacedCopy(line, Placed(90, false, 10, 20));
    EXPECT_EQ(dynamic_cast<CJOBXlayObjLine&>(*turned).GetStartPoint(), CPointD(12, 19));
    EXPECT_EQ(dynamic_cast<CJOBXlayObjLine&>(*turned).GetEndPoint(), CPointD(15, 17));
    const auto mirrored = PlacedCopy(line, Placed(90, true, 10, 20)); // mirrored last: x changes its sign
    EXPECT_EQ(dynamic_cast<CJOBXlayObjLine&>(*mirrored).GetStartPoint(), CPointD(8, 19));
    EXPECT_EQ(dynamic_cast<CJOBXlayObjLine&>(*mirrored).GetEndPoint(), CPointD(5, 17));
}

TEST(PlacedCopy, ExchangesTheDirectionOfAMirroredArc)
{
    CJOBXlayObjArc arc;
    arc.SetType("A");
    arc.SetStartPoint({1, 0});
    arc.SetEndPoint({0, 1});
    arc.SetCenterPoint({0, 0});
    arc.SetClockwise("N");
    EXPECT_EQ(dynamic_cast<CJOBXlayObjArc&>(*PlacedCopy(arc, Placed(90, false))).GetClockwise(), "N");
    const auto mirrored = PlacedCopy(arc, Placed(0, true, 1, 1));
    EXPECT_EQ(dynamic_cast<CJOBXlayObjArc&>(*mirrored).GetClockwise(), "Y");
    EXPECT_EQ(dynamic_cast<CJOBXlayObjArc&>(*mirrored).GetStartPoint(), CPointD(0, 1));
    EXPECT_EQ(dynamic_cast<CJOBXlayObjArc&>(*mirrored).GetCenterPoint(), CPointD(1, 1));
}

TEST(PlacedCopy, LetsMirroredContoursRunTheOtherWayRound)
{
    const auto surface = QuarterDisk();
    EXPECT_EQ(TextOf(*PlacedCopy(*surface, Placed(90, false))), "OB 1 0I; OC 0 -1 0 0Y; OS 0 0; OS 1 0; OE; ");
    EXPECT_EQ(TextOf(*PlacedCopy(*surface, Placed(0, true))), "OB 0 1I; OS 0 0; OS -1 0; OC 0 1 0 0Y; OE; ");
    EXPECT_EQ(TextOf(*surface), "OB 0 1I; OC 1 0 0 0Y; OS 0 0; OS 0 1; OE; "); // not shared with the copies
}

TEST(PlacedCopy, ExchangesDirectionsWhereAContourHasNoForm)
{
    const auto surface = QuarterDisk();
    surface->GetContours()->GetAt(0)->GetODBlayObjOXArray()->DeleteLastElement();
    EXPECT_EQ(TextOf(*PlacedCopy(*surface, Placed(0, true))), "OB 0 1I; OC -1 0 0 0N; OS 0 0; OS 0 1; ");
}

TEST(PlacedCopy, ConvertsLengthsToTheUnitOfTheFile)
{
    CJOBXlayObjPad pad;
    pad.SetType("P");
    pad.SetCenterPoint({25.4, 50.8});
    pad.SetResizeFactor(254);
    pad.SetID(7);
    const CPlacedFile file({{}, false, {1, 1}}, JOBXunit::Inch, JOBXunit::Millimetre, JOBXunit::Inch);
    const auto copy = PlacedCopy(pad, file);
    EXPECT_EQ(dynamic_cast<CJOBXlayObjPad&>(*copy).GetCenterPoint(), CPointD(2, 3));
    EXPECT_EQ(dynamic_cast<CJOBXlayObjPad&>(*copy).GetResizeFactor(), 10);
    EXPECT_EQ(copy->GetID(), CJOBXidentified::kNoID);
}

TEST(PlacedCopy, TurnsTextsAndBarcodes)
{
    CJOBXlayObjText text;
    text.SetType("T");
    text.SetOrientation(4);
    text.SetPosition({1, 0});
    const auto turned = PlacedCopy(text, Placed(90, false));
    EXPECT_EQ(dynamic_cast<CJOBXlayObjText&>(*turned).GetOrientation(), 7);
    EXPECT_EQ(dynamic_cast<CJOBXlayObjText&>(*turned).GetPosition(), CPointD(0, -1));
    CJOBXlayObjBarcode barcode;
    barcode.SetType("B");
    barcode.m_nOrientation = 1;
    barcode.m_ptPosition = {1, 0};
    const auto mirrored = PlacedCopy(barcode, Placed(0, true));
    EXPECT_EQ(dynamic_cast<CJOBXlayObjBarcode&>(*mirrored).m_nOrientation, 5);
    EXPECT_EQ(dynamic_cast<CJOBXlayObjBarcode&>(*mirrored).m_ptPosition, CPointD(-1, 0));
}
