// How features files are read: the grammar of every record, and what malformed ones become.
#include "layer/FeaturesReader.h"

#include "foundation/corekit/CFileBytes.h"
#include "layer/CJOBXlayer.h"
#include "support/CommaLocale.h"
#include "support/SlowBuild.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace
{
std::unique_ptr<CJOBXlayer> Read(std::string_view text)
{
    auto layer = std::make_unique<CJOBXlayer>();
    CLineScanner scanner(text);
    ReadFeatures(scanner, *layer);
    return layer;
}

template <class T>
const T& Feature(const CJOBXlayer& layer, int index)
{
    const auto* feature = dynamic_cast<const T*>(layer.GetFeatures()->GetAt(index));
    if (feature == nullptr)
        throw std::runtime_error("no feature of that kind at index " + std::to_string(index));
    return *feature;
}

std::string Text(const CString& text)
{
    return std::string(text.View());
}

std::string Kinds(const CJOBXlayer& layer)
{
    std::string kinds;
    for (__int64 i = 0; i < layer.GetFeatures()->GetSize(); ++i)
        kinds += layer.GetFeatures()->GetAt(i)->GetType();
    return kinds;
}

// "name#number=value#textNumber" of every property, in order.
std::string Properties(const CJOBXlayObj& feature)
{
    std::string all;
    for (int i = 0; i < feature.nGetPropertyCount(); ++i)
    {
        const CJOBXProperty& property = *feature.pGetProperty(i);
        all += (all.empty() ? "" : " ") + Text(property.m_sName) + "#" + std::to_string(property.m_nNumber) + "=" +
               Text(property.m_sValue) + "#" + std::to_string(property.m_nTextNumber);
    }
    return all;
}

// Everything a layer holds, as text, to compare two reads.
std::string Dump(const CJOBXlayer& layer)
{
    std::string out = Text(layer.m_sUnits) + "|";
    for (__int64 i = 0; i < layer.m_arrSymbolNames.GetSize(); ++i)
        out += std::to_string(layer.m_arrSymbolNumbers[i]) + Text(layer.m_arrSymbolNames[i]) + "," +
               Text(layer.m_arrSymbolSecondFields[i]) + ";";
    for (__int64 i = 0; i < layer.GetFeatures()->GetSize(); ++i)
    {
        const CJOBXlayObj& feature = *layer.GetFeatures()->GetAt(i);
        out += "|" + Text(feature.GetType()) + std::to_string(feature.GetFeatureIndex()) + Text(feature.GetPolarity()) +
               std::to_string(feature.GetSymbolNumber()) + "," + std::to_string(feature.GetDcode()) +
               Properties(feature);
    }
    return out;
}

std::string Exactly(double number)
{
    char text[40];
    std::snprintf(text, sizeof text, "%a ", number);
    return text;
}
std::string Exactly(const CPointD& point)
{
    return Exactly(point.GetX()) + Exactly(point.GetY());
}

// The dump with the geometry of the records that the reader knows by sight.
std::string FullDump(const CJOBXlayer& layer)
{
    std::string out = Dump(layer);
    for (__int64 i = 0; i < layer.GetFeatures()->GetSize(); ++i)
    {
        const CJOBXlayObj* const feature = layer.GetFeatures()->GetAt(i);
        if (const auto* const line = dynamic_cast<const CJOBXlayObjLine*>(feature))
            out += "|" + Exactly(line->GetStartPoint()) + Exactly(line->GetEndPoint());
        if (const auto* const pad = dynamic_cast<const CJOBXlayObjPad*>(feature))
            out += "|" + Exactly(pad->GetCenterPoint()) + std::to_string(pad->GetOrientation()) + " " +
                   Exactly(pad->GetRotationAngle()) + std::to_string(pad->GetResizeFlag()) +
                   Exactly(pad->GetResizeFactor());
        if (const auto* const arc = dynamic_cast<const CJOBXlayObjArc*>(feature))
            out += "|" + Exactly(arc->GetStartPoint()) + Exactly(arc->GetEndPoint()) + Exactly(arc->GetCenterPoint()) +
                   Text(arc->GetClockwise());
        const auto* const surface = dynamic_cast<const CJOBXlayObjSurface*>(feature);
        for (__int64 c = 0; surface != nullptr && c < surface->GetContours()->GetSize(); ++c)
        {
            const CJOBXlayObjOXArray& elements = *surface->GetContours()->GetAt(c)->GetODBlayObjOXArray();
            for (__int64 k = 0; k < elements.GetSize(); ++k)
                out += "|" + std::to_string(elements.GetAt(k)->GetLineNumber()) + Text(elements.GetAt(k)->GetKind()) +
                       Exactly(elements.GetAt(k)->GetPoint()) + Exactly(elements.GetAt(k)->GetCenterPoint()) +
                       Text(elements.GetAt(k)->GetClockwise()) + Text(elements.GetAt(k)->GetPolygonType());
        }
    }
    return out;
}

// The same lines with a blank before each, which means nothing, but keeps them from the fast way.
std::string Indented(const std::string& text)
{
    std::string indented = " ";
    for (const char c : text)
        indented += c == '\n' ? std::string("\n ") : std::string(1, c);
    return indented;
}

constexpr const char* kComplete =
    "#\nUNITS=MM\n$0 r10\n$1 rect20x30 M\n@0 .nomenclature\n@1 .pad_usage\n&0 hello world\n"
    "L 0 0 1 1 0 P 3 ;0=0\nP 1 2 0 P 0 8 45.5 ;1=1,0\nP 1 2 -1 1 0.5 N 2 3\n"
    "A 0 1 2 3 4 5 1 N 7 Y ;0\nT 1 2 standard P 9 30 0.1 0.2 1.5 'AB C' 2 ;0=0\n"
    "B 1 2 UPC39 standard P 1 E 0.01 0.2 Y N Y Y T '12345' ;0=0\n"
    "S P 0 ;0=0\nOB 0 0 I\nOS 1 0\nOC 1 1 0.5 0.5 Y\nOE\nSE\n";

// Lines as most programs write them, and some that are nearly so.
constexpr const char* kPlainLines[] = {"L 3.0938 2.01666545 -3.1070002 2.01666545 2 P 0;0,1,2=8,3=0.000000",
                                       "L 3.05600059 2 3.05215039 2.00066644 2 P 0;0,1,2=8,3=0.000000",
                                       "L 0 -0 1e3 1 12 N 3",
                                       "P 1.37 1.81 11 P 0 8;3=0,5=1",
                                       "P 1.37 1.81 11 P 0 8 30.5;3=0,5=1",
                                       "P 1.37 1.81 -1 5 0.5 N 0 2",
                                       "P .5 5. 0 N 1234567890 0",
                                       "P 1.37 1.81 11 P 0 8  ;3=0,5=1 ",
                                       "P 1.37 1.81 11 P 0 8 30.5 ;3=0;ID=7 ",
                                       "L 3.05600059 2 3.05215039 2.00066644 2 P 0 ;0=1",
                                       "L 3.05600059 2 3.05215039 2.00066644 2 P 0 ",
                                       "A 0 1.25 2 3 4 5 1 N 7 Y ;0",
                                       "A 0 1.25 2 3 4 5 1 N 7 N;0",
                                       "A 0 1.25 2 3 4 5 1 p 7 Y",
                                       "S P 0;2",
                                       "OB 1.8249 1.361480019685 I",
                                       "OS 1.82255 1.370480019685",
                                       "OS 1.82255 1.370480019685 ",
                                       "OC 1.822530019685 1.36385 1.8249 1.36385 Y",
                                       "OC 1 2 3 4 N",
                                       "OE",
                                       "SE",
                                       "",
                                       "# comment",
                                       "&1 another text"};
constexpr const char* kElements[] = {"OS 1.82255 1.370480019685",
                                     "OS -3 .5",
                                     "OC 1.822530019685 1.36385 1.8249 1.36385 Y",
                                     "OC 1 2 3 4 N",
                                     "OC 1 2 3 4 y",
                                     "",
                                     "# comment"};

std::string RandomLines(std::mt19937& random, std::span<const char* const> lines, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += std::string(lines[random() % lines.size()]) + (random() % 8 == 0 ? "\r\n" : "\n");
    return text;
}

std::string RandomSurface(std::mt19937& random)
{
    std::string text = "S P 0\n";
    for (auto contours = 1 + random() % 3; contours > 0; --contours)
        text += std::string("OB 1.8249 1.361480019685 ") + (random() % 2 == 0 ? "I\n" : "H\n") +
                RandomLines(random, kElements, 5) + "OE\n";
    return text + "SE\n";
}

// A few bytes less, more or other.
void Disturb(std::mt19937& random, std::string& text)
{
    const std::string letters = "0123456789 .-+;=,PNYIHOSCEL\t\r\n\v#xe";
    for (auto changes = random() % 4; changes > 0; --changes)
    {
        const std::size_t at = random() % text.size();
        if (random() % 3 == 0)
            text.erase(at, 1);
        else if (random() % 10 == 0)
            text[at] = '\0';
        else
            text.insert(at, 1, letters[random() % letters.size()]);
    }
    if (random() % 4 == 0)
        text.pop_back();
}

// Adds the contour elements of the layer's surfaces, by the letter of their kind.
void CountElements(const CJOBXlayer& layer, std::map<char, long>& counts)
{
    for (__int64 i = 0; i < layer.GetFeatures()->GetSize(); ++i)
    {
        const auto* const surface = dynamic_cast<const CJOBXlayObjSurface*>(layer.GetFeatures()->GetAt(i));
        for (__int64 c = 0; surface != nullptr && c < surface->GetContours()->GetSize(); ++c)
        {
            const CJOBXlayObjOXArray& elements = *surface->GetContours()->GetAt(c)->GetODBlayObjOXArray();
            for (__int64 k = 0; k < elements.GetSize(); ++k)
                ++counts[std::string(elements.GetAt(k)->GetKind()).back()];
        }
    }
}
} // namespace

TEST(FeaturesReader, KindIsToldByFirstLettersInFixedOrder)
{
    struct Case
    {
        const char* line;
        const char* kinds;
    };
    // "SE" wins over "S", "OB" to "OE" over nothing else, "U" over whatever else begins so.
    const Case cases[] = {{"L 0 0 1 1 0 P 0", "L"},
                          {"l 0 0 1 1 0 P 0", "L"},
                          {"P 0 0 0 P 0 0", "P"},
                          {"p 0 0 0 P 0 0", "P"},
                          {"A 0 0 0 0 0 0 0 P 0 Y", "A"},
                          {"a", "A"},
                          {"T", "T"},
                          {"t", "T"},
                          {"B", "B"},
                          {"b", "B"},
                          {"S P 0\nSE", "S"},
                          {"s P 0\nse", "S"},
                          {"S P 0\nSEVEN", "S"},
                          {"LAYER", "L"},
                          {"PROFILE", "P"},
                          {"ATTR", "A"},
                          {"TEXT", "T"},
                          {"BAR", "B"},
                          {"#L 0 0", ""},
                          {"UNITS=L", ""},
                          {"ux", ""},
                          {"$0 L", ""},
                          {"@0 L", ""},
                          {"&0 L", ""},
                          {"O 1 2", ""},
                          {"OX", ""},
                          {"SE", ""},
                          {"S P 0", ""},
                          {"F 12", ""},
                          {"ID=3", ""},
                          {"N", ""},
                          {"0", ""},
                          {";", ""},
                          {"\xC3\xA4", ""}};
    for (const Case& c : cases)
        EXPECT_EQ(Kinds(*Read(c.line)), c.kinds) << c.line;
}

TEST(FeaturesReader, ReadsLine)
{
    const auto layer = Read("L 1.5 -2 3e1 .25 7 N 9");
    const auto& line = Feature<CJOBXlayObjLine>(*layer, 0);
    EXPECT_EQ(line.GetType(), "L");
    EXPECT_EQ(line.GetStartPoint(), CPointD(1.5, -2));
    EXPECT_EQ(line.GetEndPoint(), CPointD(30, 0.25));
    EXPECT_EQ(line.GetSymbolNumber(), 7);
    EXPECT_EQ(line.GetPolarity(), "N");
    EXPECT_EQ(line.GetDcode(), 9);
    EXPECT_EQ(line.GetPadName(), "");
    EXPECT_EQ(line.GetSurfaceIndex(), -1);
    EXPECT_EQ(line.nGetPropertyCount(), 0);
}

TEST(FeaturesReader, LowerCaseRecordLetterIsALineAndValuesKeepTheirCase)
{
    const auto layer = Read("l 0 0 1 1 0 p 0");
    const auto& line = Feature<CJOBXlayObjLine>(*layer, 0);
    EXPECT_EQ(line.GetType(), "L");
    EXPECT_EQ(line.GetPolarity(), "p");
}

TEST(FeaturesReader, MissingTrailingFieldsKeepDefaults)
{
    struct Case
    {
        const char* text;
        double endX;
        int symbol;
        const char* polarity;
        int dcode;
    };
    const Case cases[] = {{"L", 0, -1, "P", 0},
                          {"L 1 2 3", 3, -1, "P", 0},
                          {"L 1 2 3 4 5", 3, 5, "P", 0},
                          {"L 1 2 3 4 5 N", 3, 5, "N", 0},
                          {"L 1 2 3 4 5 N 6", 3, 5, "N", 6},
                          {"L1 2", 0, -1, "P", 0}};
    for (const Case& c : cases)
    {
        const auto layer = Read(c.text);
        const auto& line = Feature<CJOBXlayObjLine>(*layer, 0);
        EXPECT_EQ(line.GetEndPoint().GetX(), c.endX) << c.text;
        EXPECT_EQ(line.GetSymbolNumber(), c.symbol) << c.text;
        EXPECT_EQ(line.GetPolarity(), c.polarity) << c.text;
        EXPECT_EQ(line.GetDcode(), c.dcode) << c.text;
    }
}

TEST(FeaturesReader, MalformedNumbersReadAsZeroAndTrailingCharactersAreIgnored)
{
    const auto layer = Read("L x 1.5y 2,5 0x10 12z P 3.9");
    const auto& line = Feature<CJOBXlayObjLine>(*layer, 0);
    EXPECT_EQ(line.GetStartPoint(), CPointD(0, 1.5));
    EXPECT_EQ(line.GetEndPoint(), CPointD(2, 16)); // hexadecimal as atof reads it
    EXPECT_EQ(line.GetSymbolNumber(), 12);
    EXPECT_EQ(line.GetDcode(), 3);
}

TEST(FeaturesReader, OnlyTheBlankSeparates)
{
    const auto layer = Read("  L 1\t9 2   3 4 5\tP 6 7  \t");
    const auto& line = Feature<CJOBXlayObjLine>(*layer, 0);
    EXPECT_EQ(line.GetStartPoint(), CPointD(1, 2)); // the tab and what follows it belong to the first number
    EXPECT_EQ(line.GetEndPoint(), CPointD(3, 4));
    EXPECT_EQ(line.GetSymbolNumber(), 5);
    EXPECT_EQ(line.GetPolarity(), "6");
    EXPECT_EQ(line.GetDcode(), 7);
}

TEST(FeaturesReader, ReadsPlainPad)
{
    const auto layer = Read("P 1 2 5 P 3 6");
    const auto& pad = Feature<CJOBXlayObjPad>(*layer, 0);
    EXPECT_EQ(pad.GetCenterPoint(), CPointD(1, 2));
    EXPECT_EQ(pad.GetSymbolNumber(), 5);
    EXPECT_EQ(pad.GetPolarity(), "P");
    EXPECT_EQ(pad.GetDcode(), 3);
    EXPECT_EQ(pad.GetOrientation(), 6);
    EXPECT_EQ(pad.GetRotationAngle(), 0);
    EXPECT_EQ(pad.GetResizeFlag(), 0);
    EXPECT_EQ(pad.GetResizeFactor(), 0);
}

TEST(FeaturesReader, ReadsResizedPad)
{
    const auto layer = Read("P 1 2 -1 5 0.5 N 4 0");
    const auto& pad = Feature<CJOBXlayObjPad>(*layer, 0);
    EXPECT_EQ(pad.GetSymbolNumber(), 5);
    EXPECT_EQ(pad.GetResizeFactor(), 0.5);
    EXPECT_EQ(pad.GetResizeFlag(), 1);
    EXPECT_EQ(pad.GetPolarity(), "N");
    EXPECT_EQ(pad.GetDcode(), 4);
    EXPECT_EQ(pad.GetOrientation(), 0);
}

TEST(FeaturesReader, PadFormIsChosenByTheFourthField)
{
    struct Case
    {
        const char* text;
        int symbol;
        int resized;
        const char* polarity;
    };
    const Case cases[] = {{"P 1 2 5 P 0 0", 5, 0, "P"},
                          {"P 1 2 5 p 0 0", 5, 0, "p"},
                          {"P 1 2 5 n 0 0", 5, 0, "n"},
                          {"P 1 2 5 N 0 0", 5, 0, "N"},
                          {"P 1 2 5 X 0 0", 0, 1, "0"},  // no polarity letter: resized, X reads as 0
                          {"P 1 2 -1 P 0 0", 0, 1, "0"}, // -1 is always resized
                          {"P 1 2 5 PP 0.5 N 0 0", 0, 1, "N"},
                          {"P 1 2 5", 5, 0, "P"},
                          {"P 1 2 -1", -1, 0, "P"},
                          {"P 1 2 5 N", 5, 0, "N"},
                          {"P 1 2 -1 7", 7, 1, "P"}};
    for (const Case& c : cases)
    {
        const auto layer = Read(c.text);
        const auto& pad = Feature<CJOBXlayObjPad>(*layer, 0);
        EXPECT_EQ(pad.GetSymbolNumber(), c.symbol) << c.text;
        EXPECT_EQ(pad.GetResizeFlag(), c.resized) << c.text;
        EXPECT_EQ(pad.GetPolarity(), c.polarity) << c.text;
    }
}

TEST(FeaturesReader, PadOrientationMayCarryAnAngle)
{
    struct Case
    {
        const char* text;
        int orientation;
        double angle;
        int properties;
    };
    const Case cases[] = {
        {"P 0 0 0 P 0 3", 3, 0, 0},         {"P 0 0 0 P 0 8 22.5", 8, 22.5, 0}, {"P 0 0 0 P 0 2 30", 2, 30, 0},
        {"P 0 0 0 P 0 9 -45;0", 9, -45, 1}, {"P 0 0 0 P 0 0 ;0,1", 0, 0, 2},    {"P 0 0 0 P 0 7;0", 7, 0, 1},
        {"P 0 0 0 P 0 ;0", 0, 0, 1},        {"P 0 0 0 P 0 x y", 0, 0, 0},       {"P 0 0 0 P 0 8  1e1  5", 8, 10, 0}};
    for (const Case& c : cases)
    {
        const auto layer = Read(c.text);
        const auto& pad = Feature<CJOBXlayObjPad>(*layer, 0);
        EXPECT_EQ(pad.GetOrientation(), c.orientation) << c.text;
        EXPECT_EQ(pad.GetRotationAngle(), c.angle) << c.text;
        EXPECT_EQ(pad.nGetPropertyCount(), c.properties) << c.text;
    }
}

TEST(FeaturesReader, ReadsArc)
{
    const auto layer = Read("A 1 2 3 4 5 6 7 N 8 Y");
    const auto& arc = Feature<CJOBXlayObjArc>(*layer, 0);
    EXPECT_EQ(arc.GetStartPoint(), CPointD(1, 2));
    EXPECT_EQ(arc.GetEndPoint(), CPointD(3, 4));
    EXPECT_EQ(arc.GetCenterPoint(), CPointD(5, 6));
    EXPECT_EQ(arc.GetSymbolNumber(), 7);
    EXPECT_EQ(arc.GetPolarity(), "N");
    EXPECT_EQ(arc.GetDcode(), 8);
    EXPECT_EQ(arc.GetClockwise(), "Y");
}

TEST(FeaturesReader, AttributeListCompletesTheLastField)
{
    const auto arc = Read("@3 .x\nA 1 2 3 4 5 6 7 N 8 N ;3");
    EXPECT_EQ(Feature<CJOBXlayObjArc>(*arc, 0).GetClockwise(), "N");
    EXPECT_EQ(Properties(Feature<CJOBXlayObjArc>(*arc, 0)), ".x#3=#-1");
    const auto attached = Read("A 1 2 3 4 5 6 7 N 8 Y;3");
    EXPECT_EQ(Feature<CJOBXlayObjArc>(*attached, 0).GetClockwise(), "Y");
    const auto line = Read("L 0 0 0 0 0 P 12;;;3,4");
    EXPECT_EQ(Feature<CJOBXlayObjLine>(*line, 0).GetDcode(), 12);
    EXPECT_EQ(Properties(Feature<CJOBXlayObjLine>(*line, 0)), "#3=#-1 #4=#-1");
    const auto noList = Read("L 0 0 0 0 0 P 12;");
    EXPECT_EQ(Feature<CJOBXlayObjLine>(*noList, 0).nGetPropertyCount(), 0);
}

TEST(FeaturesReader, TextThatEndsBeforeItsOrientationHasZero)
{
    const auto layer = Read("T 1 2 standard P");
    EXPECT_EQ(Feature<CJOBXlayObjText>(*layer, 0).GetFontName(), "standard");
    EXPECT_EQ(Feature<CJOBXlayObjText>(*layer, 0).GetOrientation(), 0);
}

TEST(FeaturesReader, TextReadsAngleForOrientationEightAndNineOnly)
{
    const auto layer = Read("T 0 0 standard P 9 45 0.1 0.1 1 'AB' 1\nT 3 4 simple N 8 30 0.5 0.6 2 'C'\n"
                            "T 0 0 standard P 7 45 0.1 1 'D' 1");
    const auto& nine = Feature<CJOBXlayObjText>(*layer, 0);
    EXPECT_EQ(nine.GetOrientation(), 9);
    EXPECT_EQ(nine.GetRotationAngle(), 45);
    EXPECT_EQ(nine.GetSize(), CPointD(0.1, 0.1));
    EXPECT_EQ(nine.GetWidthFactor(), 1);
    EXPECT_EQ(nine.GetText(), "AB");
    EXPECT_EQ(nine.GetVersion(), 1);
    const auto& eight = Feature<CJOBXlayObjText>(*layer, 1);
    EXPECT_EQ(eight.GetPosition(), CPointD(3, 4));
    EXPECT_EQ(eight.GetFontName(), "simple");
    EXPECT_EQ(eight.GetPolarity(), "N");
    EXPECT_EQ(eight.GetRotationAngle(), 30);
    EXPECT_EQ(eight.GetSize(), CPointD(0.5, 0.6));
    EXPECT_EQ(eight.GetWidthFactor(), 2);
    const auto& seven = Feature<CJOBXlayObjText>(*layer, 2);
    EXPECT_EQ(seven.GetRotationAngle(), 0);
    EXPECT_EQ(seven.GetSize(), CPointD(45, 0.1));
}

TEST(FeaturesReader, QuotedTextKeepsBlanksAndLosesLeadingQuotes)
{
    struct Case
    {
        const char* tail;
        const char* text;
        int version;
        int properties;
    };
    const Case cases[] = {{"'A B  C' 3", "A B  C", 3, 0},
                          {"'AB'", "AB", 1, 0},
                          {"'AB' ;1,2", "AB", 1, 2},
                          {"'AB' 2;1", "AB", 2, 1},
                          {"'A;B' 2", "A;B", 2, 0},
                          {"'''AB' 2", "AB", 2, 0},
                          {"'AB'CD' 2", "AB", 0, 0}, // what follows the quote is the version
                          {"'AB", "AB", 1, 0},       // an unclosed quote takes the rest
                          {"'AB ;1", "AB ;1", 1, 0},
                          {"", "", 1, 0},
                          {"AB 2", "", 1, 0}, // no quotes: text and version keep their defaults
                          {"AB 2 ;1", "", 1, 1},
                          {"'", "", 1, 0}};
    for (const Case& c : cases)
    {
        const auto layer = Read(std::string("T 0 0 standard P 0 0.1 0.1 1 ") + c.tail);
        const auto& text = Feature<CJOBXlayObjText>(*layer, 0);
        EXPECT_EQ(text.GetText(), c.text) << c.tail;
        EXPECT_EQ(text.GetVersion(), c.version) << c.tail;
        EXPECT_EQ(text.nGetPropertyCount(), c.properties) << c.tail;
    }
}

TEST(FeaturesReader, ReadsBarcode)
{
    const auto layer = Read("B 1 2 UPC39 standard N 3 E 0.01 0.25 Y N y n T 'AB 12' ;0");
    const auto& barcode = Feature<CJOBXlayObjBarcode>(*layer, 0);
    EXPECT_EQ(barcode.m_ptPosition, CPointD(1, 2));
    EXPECT_EQ(barcode.m_sBarcodeName, "UPC39");
    EXPECT_EQ(barcode.m_sFontName, "standard");
    EXPECT_EQ(barcode.GetPolarity(), "N");
    EXPECT_EQ(barcode.m_nOrientation, 3);
    EXPECT_EQ(barcode.m_sEFlag, "E");
    EXPECT_EQ(barcode.m_dWidth, 0.01);
    EXPECT_EQ(barcode.m_dHeight, 0.25);
    EXPECT_EQ(barcode.m_sFasc, "Y");
    EXPECT_EQ(barcode.m_sCs, "N");
    EXPECT_EQ(barcode.m_sBg, "y");
    EXPECT_EQ(barcode.m_sAstr, "n");
    EXPECT_EQ(barcode.m_sAstrPosition, "T");
    EXPECT_EQ(barcode.m_sText, "AB 12");
    EXPECT_EQ(barcode.nGetPropertyCount(), 1);
}

TEST(FeaturesReader, ReadsSurfaceWithContours)
{
    const auto layer = Read("#\nS N 4 ;0\nOB 0 0 I\nOS 1 0\nOC 1 1 0.5 0.25 Y\nOE\nOB 5 6 H\nOE\nSE\nL 0 0 0 0 0 P 0");
    EXPECT_EQ(Kinds(*layer), "SL");
    const auto& surface = Feature<CJOBXlayObjSurface>(*layer, 0);
    EXPECT_EQ(surface.GetPolarity(), "N");
    EXPECT_EQ(surface.GetDcode(), 4);
    EXPECT_EQ(surface.nGetPropertyCount(), 1);
    ASSERT_EQ(surface.GetContours()->GetSize(), 2);
    const CJOBXlayObjOXArray& first = *surface.GetContours()->GetAt(0)->GetODBlayObjOXArray();
    ASSERT_EQ(first.GetSize(), 4);
    EXPECT_EQ(first.GetAt(0)->GetKind(), "OB");
    EXPECT_EQ(first.GetAt(0)->GetPolygonType(), "I");
    EXPECT_EQ(first.GetAt(0)->GetLineNumber(), 3);
    EXPECT_EQ(first.GetAt(1)->GetKind(), "OS");
    EXPECT_EQ(first.GetAt(1)->GetPoint(), CPointD(1, 0));
    EXPECT_EQ(first.GetAt(2)->GetKind(), "OC");
    EXPECT_EQ(first.GetAt(2)->GetPoint(), CPointD(1, 1));
    EXPECT_EQ(first.GetAt(2)->GetCenterPoint(), CPointD(0.5, 0.25));
    EXPECT_EQ(first.GetAt(2)->GetClockwise(), "Y");
    EXPECT_EQ(first.GetAt(3)->GetKind(), "OE");
    EXPECT_EQ(first.GetAt(3)->GetLineNumber(), 6);
    EXPECT_EQ(surface.GetContours()->GetAt(1)->GetODBlayObjOXArray()->GetAt(0)->GetPolygonType(), "H");
}

TEST(FeaturesReader, DropsSurfaceWithoutSE)
{
    EXPECT_EQ(Kinds(*Read("S P 0\nOB 0 0 I\nOE\n")), "");
    EXPECT_EQ(Kinds(*Read("S P 0\nOB 0 0 I\nOE\nS N 0\nSE\n")), "S"); // the second S replaces the first
    EXPECT_EQ(Feature<CJOBXlayObjSurface>(*Read("S P 0\nS N 0\nSE\nSE\n"), 0).GetPolarity(), "N");
}

TEST(FeaturesReader, SurfaceStandsWhereItEndsAndIsNumberedWhereItBegins)
{
    const auto layer = Read("L\nS P 0\nP 0 0 0 P 0 0\nSE\nT\n");
    EXPECT_EQ(Kinds(*layer), "LPST");
    const int expected[] = {0, 2, 1, 3};
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(layer->GetFeatures()->GetAt(i)->GetFeatureIndex(), expected[i]) << i;
}

TEST(FeaturesReader, AbandonedSurfaceStillUsesAnIndex)
{
    const auto layer = Read("S P 0\nS P 0\nSE\nL\n");
    EXPECT_EQ(layer->GetFeatures()->GetAt(0)->GetFeatureIndex(), 1);
    EXPECT_EQ(layer->GetFeatures()->GetAt(1)->GetFeatureIndex(), 2);
}

TEST(FeaturesReader, DropsContourLinesBeforeAnyContour)
{
    const auto layer = Read("OS 9 9\nOC 1 1 0 0 Y\nOE\nOB 1 1 I\nS P 0\nOS 1 1\nOC 2 2 0 0 Y\nOE\nOB 3 3 H\nOE\nSE\n");
    const auto& surface = Feature<CJOBXlayObjSurface>(*layer, 0);
    ASSERT_EQ(surface.GetContours()->GetSize(), 1);
    ASSERT_EQ(surface.GetContours()->GetAt(0)->GetODBlayObjOXArray()->GetSize(), 2);
    EXPECT_EQ(surface.GetContours()->GetAt(0)->GetODBlayObjOXArray()->GetAt(0)->GetPoint(), CPointD(3, 3));
}

TEST(FeaturesReader, ContourPointWithoutItsSecondNumberTakesItsWholeLine)
{
    for (const char* const line : {"OS 1 x", "OS 1 OE", "OS 1 L 0 0 1 1 0 P 0"})
    {
        const auto layer = Read("S P 0\nOB 0 0 I\n" + std::string(line) + "\nOS 2 2\nOE\nSE\nL 0 0 1 1 0 P 0\n");
        EXPECT_EQ(Kinds(*layer), "SL") << line;
        const auto& surface = Feature<CJOBXlayObjSurface>(*layer, 0);
        ASSERT_EQ(surface.GetContours()->GetSize(), 1) << line;
        const CJOBXlayObjOXArray& elements = *surface.GetContours()->GetAt(0)->GetODBlayObjOXArray();
        ASSERT_EQ(elements.GetSize(), 4) << line;
        EXPECT_EQ(elements.GetAt(1)->GetPoint(), CPointD(1, 0)) << line;
        EXPECT_EQ(elements.GetAt(2)->GetLineNumber(), 4) << line;
    }
}

TEST(FeaturesReader, DirectionOfAContourArcIsItsFifthFieldWhateverStandsInIt)
{
    for (const auto& [line, direction] :
         {std::pair("OC 1 2 3 4 Y", "Y"), std::pair("OC 1 2 3 4 Y;0", "Y;0"), std::pair("OC 1 2 3 4 ;0", ";0"),
          std::pair("OC 1 2 3 4 N junk ;", "N"), std::pair("OC 1 2 3 4", "")})
    {
        const auto layer = Read("S P 0\nOB 0 0 I\n" + std::string(line) + "\nOE\nSE\n");
        const auto& surface = Feature<CJOBXlayObjSurface>(*layer, 0);
        ASSERT_EQ(surface.GetContours()->GetSize(), 1) << line;
        EXPECT_EQ(surface.GetContours()->GetAt(0)->GetODBlayObjOXArray()->GetAt(1)->GetClockwise(), direction) << line;
    }
}

TEST(FeaturesReader, NewContourReplacesAnUnfinishedOne)
{
    const auto layer = Read("S P 0\nOB 1 1 I\nOS 2 2\nOB 3 3 I\nOE\nSE\n");
    const auto& surface = Feature<CJOBXlayObjSurface>(*layer, 0);
    ASSERT_EQ(surface.GetContours()->GetSize(), 1);
    EXPECT_EQ(surface.GetContours()->GetAt(0)->GetODBlayObjOXArray()->GetAt(0)->GetPoint(), CPointD(3, 3));
}

TEST(FeaturesReader, ContourOutlivesTheEndOfItsSurface)
{
    // SE leaves the open contour alone: the next surface finishes it.
    const auto layer = Read("S P 0\nOB 1 1 I\nSE\nOS 2 2\nOC 5 5 0 0 Y\nOE\nS N 0\nOS 3 3\nOE\nSE\n");
    EXPECT_EQ(Feature<CJOBXlayObjSurface>(*layer, 0).GetContours()->GetSize(), 0);
    const auto& second = Feature<CJOBXlayObjSurface>(*layer, 1);
    ASSERT_EQ(second.GetContours()->GetSize(), 1);
    // OS needs the contour only; OC and OE between the surfaces need a surface as well and are dropped.
    EXPECT_EQ(second.GetContours()->GetAt(0)->GetODBlayObjOXArray()->GetSize(), 4);
}

TEST(FeaturesReader, UnitsLineLosesEverythingUpToTheFirstBlank)
{
    EXPECT_EQ(Read("")->m_sUnits, "INCH");
    EXPECT_EQ(Read("UNITS=INCH")->m_sUnits, "UNITS=INCH");
    EXPECT_EQ(Read("UNITS=MM")->m_sUnits, "UNITS=MM");
    EXPECT_EQ(Read("UNITS = INCH")->m_sUnits, "= INCH");
    EXPECT_EQ(Read("U MM")->m_sUnits, "MM");
    EXPECT_EQ(Read("u  mm  x ")->m_sUnits, "mm  x");
    EXPECT_EQ(Read("U INCH\nU MM")->m_sUnits, "MM");
}

TEST(FeaturesReader, SymbolLineHasANameAndMaybeASecondField)
{
    const auto layer = Read("$3 r10\n$4 rect1x2 M\n$$5   s3    I x\n$6\n$x y\n");
    ASSERT_EQ(layer->m_arrSymbolNames.GetSize(), 5);
    ASSERT_EQ(layer->m_arrSymbolNumbers.GetSize(), 5);
    ASSERT_EQ(layer->m_arrSymbolSecondFields.GetSize(), 5);
    const char* const names[] = {"r10", "rect1x2", "s3", "", "y"};
    const char* const seconds[] = {"", "M", "I x", "", ""};
    const int numbers[] = {3, 4, 5, 6, 0};
    for (int i = 0; i < 5; ++i)
    {
        EXPECT_EQ(layer->m_arrSymbolNames[i], names[i]) << i;
        EXPECT_EQ(layer->m_arrSymbolSecondFields[i], seconds[i]) << i;
        EXPECT_EQ(layer->m_arrSymbolNumbers[i], numbers[i]) << i;
    }
}

TEST(FeaturesReader, AttributeTablesKeepBlanksInTexts)
{
    const auto layer = Read("@1 .name with blanks\n&2   a  b ;c \n@7\n&99999999999 x\n");
    EXPECT_EQ(layer->GetAttributeName(1), ".name with blanks");
    EXPECT_EQ(layer->GetAttributeText(2), "a  b ;c");
    EXPECT_EQ(layer->m_arrAttributeNames.GetSize(), 2);
    EXPECT_EQ(layer->GetAttributeName(7), "");
    EXPECT_EQ(layer->GetAttributeText(2147483647), "x");
}

TEST(FeaturesReader, AttributesAreResolvedByNumber)
{
    const auto layer = Read("@0 .a\n@1 .b\n&0 zero\n&1 one\nL 0 0 0 0 0 P 0 ;1=0,0,5=1,1=7,,0=,\n");
    EXPECT_EQ(Properties(Feature<CJOBXlayObjLine>(*layer, 0)), ".b#1=zero#0 .a#0=#-1 #5=one#1 .b#1=#7 .a#0=zero#0");
}

TEST(FeaturesReader, TwoEntriesOfOneNumberGiveTheFirst)
{
    const auto layer = Read("@0 .first\n@0 .second\n&3 x\n&3 y\nL 0 0 0 0 0 P 0 ;0=3\n");
    EXPECT_EQ(Properties(Feature<CJOBXlayObjLine>(*layer, 0)), ".first#0=x#3");
}

TEST(FeaturesReader, EveryKnownPadUsageEndsAsToolingHole)
{
    std::string text = "@7 .pad_usage\n&0 zero\n&2 two\n";
    for (const char* value : {"0", "1", "2", "3", "4", "5", "-1"})
        text += std::string("P 0 0 0 P 0 0 ;7=") + value + "\n";
    const auto layer = Read(text);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(layer->GetFeatures()->GetAt(i)->pGetProperty(0)->m_sValue, "tooling_hole") << i;
    EXPECT_EQ(layer->GetFeatures()->GetAt(2)->pGetProperty(0)->m_nTextNumber, 2);
    EXPECT_EQ(layer->GetFeatures()->GetAt(5)->pGetProperty(0)->m_sValue, "");
    EXPECT_EQ(layer->GetFeatures()->GetAt(6)->pGetProperty(0)->m_sValue, "");
}

TEST(FeaturesReader, TextOfAnAttributeWithoutTextNumberIsLookedUpByMinusOne)
{
    const std::string tables = "@0 .a\n@1 .pad_usage\n&-1 x\n&0 zero\n";
    const std::string feature = "L 0 0 0 0 0 P 0 ;0,0=0,1\n";
    const char* const expected = ".a#0=x#-1 .a#0=zero#0 .pad_usage#1=#-1";
    EXPECT_EQ(Properties(*Read(tables + feature)->GetFeatures()->GetAt(0)), expected);
    const auto layer = Read(tables + "L 0 0 0 0 0 P 0\n");
    layer->AddPropertyData("0,0=0,1", layer->GetFeatures()->GetAt(0));
    EXPECT_EQ(Properties(*layer->GetFeatures()->GetAt(0)), expected);
}

TEST(FeaturesReader, CommasAtTheFrontOfAnAttributeListMakeOneEmptyItem)
{
    const struct
    {
        const char* list;
        const char* expected;
    } kCases[] = {
        {",1=1", ".a#0=#-1 .b#1=one#1"}, {",,1=1", ".a#0=#-1 .b#1=one#1"},
        {";;,1", ".a#0=#-1 .b#1=#-1"},   {",", ".a#0=#-1"},
        {" ,1", ".a#0=#-1 .b#1=#-1"},    {"1,,,0,", ".b#1=#-1 .a#0=#-1"},
        {"1,, ,", ".b#1=#-1 .a#0=#-1"},  {"", ""},
    };
    for (const auto& test : kCases)
    {
        const auto layer = Read("@0 .a\n@1 .b\n&1 one\nL 0 0 0 0 0 P 0 ;" + std::string(test.list) +
                                "\nP 0 0 0 P 0 0 ;" + test.list + "\n");
        ASSERT_EQ(layer->GetFeatures()->GetSize(), 2);
        for (__int64 i = 0; i < 2; ++i)
            EXPECT_EQ(Properties(*layer->GetFeatures()->GetAt(i)), test.expected) << test.list;
    }
}

TEST(FeaturesReader, AttributesSeeTheTablesAsTheyStandAtTheirLine)
{
    const auto layer = Read("L 0 0 0 0 0 P 0 ;0=0\n@0 .a\nL 0 0 0 0 0 P 0 ;0=0\n&0 text\nL 0 0 0 0 0 P 0 ;0=0\n");
    EXPECT_EQ(Properties(*layer->GetFeatures()->GetAt(0)), "#0=#0");
    EXPECT_EQ(Properties(*layer->GetFeatures()->GetAt(1)), ".a#0=#0");
    EXPECT_EQ(Properties(*layer->GetFeatures()->GetAt(2)), ".a#0=text#0");
}

TEST(FeaturesReader, ChangingOneFeaturesAttributesLeavesEqualOnesAlone)
{
    const auto layer = Read("@0 .a\nL 0 0 0 0 0 P 0 ;0\nL 0 0 0 0 0 P 0 ;0\n");
    CJOBXPropertyArray* const own = layer->GetFeatures()->GetAt(0)->GetPropertyArray();
    own->GetAt(0)->m_sValue = "changed";
    own->DeleteAll();
    own->Own(std::make_unique<CJOBXProperty>());
    EXPECT_EQ(Properties(*layer->GetFeatures()->GetAt(0)), "#-1=#-1");
    EXPECT_EQ(Properties(*layer->GetFeatures()->GetAt(1)), ".a#0=#-1");
}

// Whatever exporters put behind a second ";" is part of the last item's number, as AddPropertyData takes it.
TEST(FeaturesReader, AttributesAreThoseOfTheWholeTextBehindTheFirstSemicolon)
{
    std::string text = "@0 .a\n@2 .pad_usage\n&1 one\n&5 five\n";
    std::vector<std::string> lists;
    for (const char* const list : {"0", "0=1", "0,2=1", "2=1,0", "0=", "=1", "0=1 ", "0=1,", "x=1", "0=-1"})
        for (const char* const tail : {"", ";ID=5", ";ID=61417", ";", ";;ID=5", ";ID=5,0=1", ";ID=5;0", "; ID = 5"})
            for (int twice = 0; twice < 2; ++twice) // the second one is compared with the first
            {
                lists.push_back(std::string(list) + tail);
                text += "P 1 2 0 P 0 0;" + lists.back() + '\n';
            }
    for (const std::string& all : {text, Indented(text)})
    {
        const auto layer = Read(all);
        ASSERT_EQ(layer->GetFeatures()->GetSize(), static_cast<__int64>(lists.size()));
        for (std::size_t i = 0; i < lists.size(); ++i)
        {
            CJOBXlayObjPad expected;
            layer->AddPropertyData(CString(std::string_view(Trimmed(lists[i]))), &expected);
            EXPECT_EQ(Properties(*layer->GetFeatures()->GetAt(static_cast<__int64>(i))), Properties(expected))
                << lists[i];
        }
    }
}

TEST(FeaturesReader, AttributesThatANumberBehindThemDoesNotChangeAreShared)
{
    std::string text = "@0 .a\n@2 .b\n&1 one\n";
    for (int i = 0; i < 50; ++i)
        text += "P 1 2 0 P 0 0;0,2=1;ID=" + std::to_string(i) + '\n';
    for (const std::string& all : {text, Indented(text)})
    {
        const auto layer = Read(all);
        for (int i = 0; i < 50; ++i)
            EXPECT_EQ(layer->GetFeatures()->GetAt(i)->pGetProperty(0), layer->GetFeatures()->GetAt(0)->pGetProperty(0));
    }
    const auto flags = Read("@0 .a\n&1 one\nP 1 2 0 P 0 0;0;ID=1\nP 1 2 0 P 0 0;0;ID=2\n");
    EXPECT_EQ(Properties(*flags->GetFeatures()->GetAt(0)), ".a#0=one#1");
    EXPECT_EQ(Properties(*flags->GetFeatures()->GetAt(1)), ".a#0=#2");
}

TEST(FeaturesReader, AddPropertyDataAppendsWithTheLayersTables)
{
    const auto layer = Read("@0 .a\n@2 .pad_usage\n&1 one\nL 0 0 0 0 0 P 0 ;0\nL 0 0 0 0 0 P 0 ;0\n");
    layer->AddPropertyData("0=1,2=3", layer->GetFeatures()->GetAt(1));
    layer->AddPropertyData("1", nullptr);
    EXPECT_EQ(Properties(*layer->GetFeatures()->GetAt(0)), ".a#0=#-1");
    EXPECT_EQ(Properties(*layer->GetFeatures()->GetAt(1)), ".a#0=#-1 .a#0=one#1 .pad_usage#2=tooling_hole#3");
}

TEST(FeaturesReader, LineEndsMakeNoDifference)
{
    const std::string unixText = kComplete;
    std::string dosText;
    for (const char c : unixText)
        dosText += c == '\n' ? std::string("\r\n") : std::string(1, c);
    EXPECT_EQ(Dump(*Read(dosText)), Dump(*Read(unixText)));
    EXPECT_EQ(Dump(*Read(unixText.substr(0, unixText.size() - 1))), Dump(*Read(unixText)));
    EXPECT_EQ(Kinds(*Read(unixText)), "LPPATBS");
}

TEST(FeaturesReader, LoneCarriageReturnIsData)
{
    const auto layer = Read("&0 a\rb\r\n");
    EXPECT_EQ(layer->GetAttributeText(0), "a\rb");
}

TEST(FeaturesReader, NulEndsTheTextOfItsLine)
{
    using namespace std::string_view_literals;
    const auto layer = Read("$1 r1\0x M\n\0L 0 0 0 0 0 P 0\nL 1 1 1 1 3\0 4 P 0\n"sv);
    EXPECT_EQ(layer->m_arrSymbolNames[0], "r1");
    EXPECT_EQ(Kinds(*layer), "L");
    EXPECT_EQ(layer->GetFeatures()->GetAt(0)->GetSymbolNumber(), 3);
}

TEST(FeaturesReader, EightBitTextPassesThrough)
{
    const auto layer = Read("&0 \x80\xFF\xA0\x85 \xE4\n$0 \xC4\xD6\n");
    EXPECT_EQ(layer->GetAttributeText(0), "\x80\xFF\xA0\x85 \xE4");
    EXPECT_EQ(layer->m_arrSymbolNames[0], "\xC4\xD6");
}

TEST(FeaturesReader, EveryPrefixOfAFileIsReadSafely)
{
    const std::string text = kComplete;
    for (std::size_t length = 0; length <= text.size(); ++length)
    {
        const std::unique_ptr<char[]> exact(new char[length]); // a buffer of exactly that size, for the sanitizers
        std::memcpy(exact.get(), text.data(), length);
        const auto layer = Read({exact.get(), length});
        EXPECT_LE(Kinds(*layer).size(), 7U);
    }
}

TEST(FeaturesReader, EveryByteReplacedIsReadSafely)
{
    std::string text = kComplete;
    for (std::size_t at = 0; at < text.size(); ++at)
        for (const char c : {'\0', '\xFF', '\n', ' ', ';', '\''})
        {
            const char old = text[at];
            text[at] = c;
            EXPECT_LE(Kinds(*Read(text)).size(), 9U);
            text[at] = old;
        }
}

// Lines in the form that most programs write are read by a shorter way, which must not show.
TEST(FeaturesReader, PlainLinesReadAsIndentedOnes)
{
    const char* const chosen = std::getenv("JOBX_TEST_SEED");
    const unsigned seed = chosen != nullptr ? static_cast<unsigned>(std::atoi(chosen)) : 20260101U;
    SCOPED_TRACE("JOBX_TEST_SEED=" + std::to_string(seed));
    std::mt19937 random(seed);
    std::map<char, long> elements;
    for (int round = 0; round < 1500; ++round)
    {
        std::string text = "@0 .a\n@1 .b\n@2 .pad_usage\n@3 .c\n&8 text\n&0 zero\n";
        text += round % 2 == 0 ? RandomSurface(random) : RandomLines(random, kPlainLines, 12);
        Disturb(random, text);
        const auto layer = Read(text);
        const std::string indented = FullDump(*Read(Indented(text)));
        ASSERT_EQ(FullDump(*layer), indented) << text;
        CountElements(*layer, elements);
    }
    for (const char kind : {'B', 'S', 'C'})
        EXPECT_GT(elements[kind], 1000) << "O" << kind;
}

// A file, unlike a text in memory, is read in pieces; a line may lie across the border of two.
TEST(FeaturesReader, LinesAcrossThePiecesOfAFileReadAsOthers)
{
    std::mt19937 random(20260101U);
    std::string text = "@0 .a\n@1 .b\n@3 .c\n&8 text\n";
    while (text.size() < 3 * CFilePieces::kPiece)
        text += RandomSurface(random) + RandomLines(random, kPlainLines, 12);
    const TempDir dir;
    for (int shift = 0; shift < 3; ++shift)
    {
        text.insert(0, "#\n");
        CJOBXlayer layer;
        ASSERT_EQ(layer.ParseODBOfMFC(dir.Write("features", text).c_str()), 1);
        ASSERT_EQ(FullDump(layer), FullDump(*Read(Indented(text)))) << shift;
    }
}

TEST(FeaturesReader, ManyDifferentAttributeListsAreAllKept)
{
    constexpr int kLists = 70'000; // more than are remembered
    std::string text = "@0 .a\n";
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < kLists; ++i)
            text += "L 0 0 1 1 0 P 0;0=" + std::to_string(i) + "\n";
    const auto layer = Read(text);
    ASSERT_EQ(layer->GetFeatures()->GetSize(), 2 * kLists);
    for (__int64 i = 0; i < layer->GetFeatures()->GetSize(); ++i)
        ASSERT_EQ(layer->GetFeatures()->GetAt(i)->pGetProperty(0)->m_nTextNumber, i % kLists);
}

TEST(FeaturesReader, ReadingTwiceAppends)
{
    const TempDir dir;
    const std::string path = dir.Write("features", kComplete);
    CJOBXlayer layer;
    EXPECT_EQ(layer.ParseODBOfMFC(path.c_str()), 1);
    EXPECT_EQ(layer.ParseODBOfMFC(path.c_str()), 1);
    EXPECT_EQ(Kinds(layer), "LPPATBSLPPATBS");
    EXPECT_EQ(layer.m_arrSymbolNames.GetSize(), 4);
    EXPECT_EQ(layer.GetFeatures()->GetAt(7)->GetFeatureIndex(), 0);
}

TEST(FeaturesReader, MissingFileGivesAnEmptyLayerAndOne)
{
    const TempDir dir;
    CJOBXlayer layer;
    EXPECT_EQ(layer.ParseODBOfMFC(dir.Path("none").c_str()), 1);
    EXPECT_EQ(layer.ParseODBOfMFC(dir.MakeDir("directory").c_str()), 1);
    EXPECT_EQ(layer.GetFeatures()->GetSize(), 0);
    EXPECT_EQ(layer.m_sUnits, "INCH");
    EXPECT_EQ(layer.m_dRescaleFactor, 1.0);
    EXPECT_EQ(layer.GEtODBFeatureLineNo(), 0);
}

TEST(FeaturesReader, EmptyFileGivesAnEmptyLayer)
{
    const TempDir dir;
    CJOBXlayer layer;
    EXPECT_EQ(layer.ParseODBOfMFC(dir.Write("features", "").c_str()), 1);
    EXPECT_EQ(layer.GetFeatures()->GetSize(), 0);
}

TEST(FeaturesReader, NumbersDoNotDependOnTheLocale)
{
    JOBX_REQUIRE_COMMA_LOCALE(comma);
    const auto layer = Read("L 1.5 2,5 0 0 0 P 0");
    EXPECT_EQ(Feature<CJOBXlayObjLine>(*layer, 0).GetStartPoint(), CPointD(1.5, 2));
}

TEST(FeaturesReader, OneLongLineIsOneRecord)
{
    constexpr int kAttributes = kIsSlowBuild ? 100'000 : 1'000'000;
    std::string text = "L 0 0 1 1 0 P 0 ;";
    for (int i = 0; i < kAttributes; ++i)
        text += "1=2,";
    const auto layer = Read(text);
    EXPECT_EQ(layer->GetFeatures()->GetAt(0)->nGetPropertyCount(), kAttributes);
    EXPECT_EQ(Kinds(*Read(std::string(50U * kAttributes, 'x'))), "");
    EXPECT_EQ(Kinds(*Read("P " + std::string(1'000'000, '1'))), "P");
    EXPECT_TRUE(std::isinf(Feature<CJOBXlayObjPad>(*Read("P " + std::string(1'000, '1')), 0).GetCenterPoint().GetX()));
}

TEST(FeaturesReader, ManyAttributeTextsAreFoundQuickly)
{
    constexpr int kTexts = kIsSlowBuild ? 20'000 : 200'000;
    std::string text = "@0 .a\n";
    for (int i = 0; i < kTexts; ++i)
        text += "&" + std::to_string(i) + " t" + std::to_string(i) + "\n";
    for (int i = 0; i < kTexts; ++i)
        text += "L 0 0 0 0 0 P 0 ;0=" + std::to_string(i) + "\n";
    const auto layer = Read(text); // would take minutes if each lookup walked the table
    EXPECT_EQ(layer->GetFeatures()->GetAt(kTexts - 1)->pGetProperty(0)->m_sValue,
              ("t" + std::to_string(kTexts - 1)).c_str());
}
