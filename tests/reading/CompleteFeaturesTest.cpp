// What complete reading takes from a features file, and what it says.
#include "layer/CJOBXlayer.h"
#include "layer/FeaturesReader.h"
#include "layer/RecordOfType.h"
#include "reading/RecordedMessages.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>

#include <memory>
#include <random>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
class CompleteFeatures : public testing::Test
{
protected:
    CompleteFeatures() { job.types.Add(".mount", {JOBXattributeKind::Option, {"other", "smd"}}); }

    // Reads a file with this text; `sink` gets what is said.
    std::unique_ptr<CJOBXlayer> Read(const std::string& text)
    {
        dir.Write("features", text);
        CMessageList messages(reading);
        const CReadingContext context{job, messages};
        auto layer = std::make_unique<CJOBXlayer>();
        CSourceFile file(context, CString(std::string_view(dir.Path())), "features", Presence::Needed);
        ReadCompletely(context, file, *layer);
        messages.Deliver();
        return layer;
    }
    std::vector<std::string> Said(const std::string& text)
    {
        sink.lines.clear();
        Read(text);
        return sink.lines;
    }

    TempDir dir;
    RecordedMessages sink;
    CJOBXreading reading = sink.Reading();
    CReadingJob job{reading, CString(std::string_view(dir.Path()))};
};

// "type number: name kind value, ..." of a feature.
std::string Described(const CJOBXlayObj& feature)
{
    constexpr const char* kKinds[] = {"unknown", "flag", "integer", "real", "text", "option"};
    std::string text = std::string(feature.GetType().View()) + ' ' + std::to_string(feature.GetID()) + ':';
    for (int i = 0; i < feature.nGetPropertyCount(); ++i)
    {
        const CJOBXProperty& property = *feature.pGetProperty(i);
        text += ' ' + std::string(property.m_sName.View()) + ' ' + kKinds[static_cast<int>(property.GetKind())] +
                (property.m_sValue.IsEmpty() ? "" : " " + std::string(property.m_sValue.View())) + ',';
    }
    return text;
}

std::vector<std::string> Described(const CJOBXlayer& layer)
{
    std::vector<std::string> texts;
    for (__int64 i = 0; i < layer.GetFeatures()->GetSize(); ++i)
        texts.push_back(Described(*layer.GetFeatures()->GetAt(i)));
    return texts;
}

constexpr char kTables[] = "$0 r10\n@0 .smd\n@1 .mount\n@2 .string\n&0 a text\n";

TEST_F(CompleteFeatures, HaveTheirAttributesByKindAndTheirUniqueNumbers)
{
    const auto layer = Read(std::string(kTables) + "F 7\nID=77\n"
                                                   "P 1 2 0 P 0 0;0,1=1,2=0;ID=61417\n"
                                                   "P 1 2 0 P 0 0;0,1=1,2=0;ID=61418\n"
                                                   "L 1 2 3 4 0 P 0;;ID=3000000000\n"
                                                   "A 1 2 3 4 5 6 0 P 0 Y ;1=0\n"
                                                   "T 1 2 standard P 0 0.1 0.1 1 'x' 1;2=0;ID=1\n"
                                                   "B 1 2 UPC39 standard P 0 E 0.1 0.2 N N N Y B 'y';0;ID=2\n"
                                                   "S P 0;0;ID=3\nOB 0 0 I\nOS 1 0\nOE\nSE\n");
    EXPECT_THAT(Described(*layer), ElementsAre("P 61417: .smd flag, .mount option smd, .string text a text,",
                                               "P 61418: .smd flag, .mount option smd, .string text a text,",
                                               "L 3000000000:", "A -1: .mount option other,",
                                               "T 1: .string text a text,", "B 2: .smd flag,", "S 3: .smd flag,"));
    EXPECT_EQ(layer->GetID(), 77);
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(CompleteFeatures, ShareTheListsOfEqualAttributesWhateverTheirNumbersAre)
{
    std::string text = kTables;
    for (int i = 0; i < 100; ++i)
        text += "P 1 2 0 P 0 0;" + std::string(i % 2 == 0 ? "0" : "1=1") + ";ID=" + std::to_string(i) + '\n';
    const auto layer = Read(text);
    const CJOBXlayObjArray& features = *layer->GetFeatures();
    for (__int64 i = 2; i < features.GetSize(); ++i)
        EXPECT_EQ(features.GetAt(i)->pGetProperty(0), features.GetAt(i - 2)->pGetProperty(0));
    EXPECT_EQ(features.GetAt(99)->GetID(), 99);
}

// A blank in front keeps a line from the fast way.
TEST_F(CompleteFeatures, AreTheSameWhetherTheirLinesArePlainOrNot)
{
    std::mt19937 random(7);
    const auto number = [&] { return std::to_string(static_cast<int>(random() % 2000) - 1000) + ".5"; };
    const auto point = [&] { return number() + ' ' + number() + ' '; };
    constexpr const char* kOrientations[] = {"2", "8 30.5", "8 0.0", "9 0", "8", "12"};
    std::string plain = kTables;
    std::string indented = kTables;
    for (int i = 0; i < 2000; ++i)
    {
        std::string line;
        switch (random() % 5)
        {
        case 0:
            line = "L " + point() + point() + "0 P 0";
            break;
        case 1:
            line = "P " + point() + "0 N 3 " + kOrientations[random() % std::size(kOrientations)];
            break;
        case 2:
            line = "A " + point() + point() + point() + "0 P 0 " + (random() % 2 == 0 ? "Y" : "N");
            break;
        case 3:
            line = "S P 0\nOB " + point() + "I\nOS " + number() + ' ' + number() + "\nOC " + point() + point() +
                   "Y\nOE\nSE";
            break;
        default:
            line = "P " + point() + "-1 0 1.5 P 0 0";
        }
        constexpr const char* kTails[] = {"",          ";0",      " ;1=1,2=0", ";;ID=5", " ;0,2=0;ID=61417 ",
                                          ";7=1;ID=6", ";0;ID=x", " ",         ";0 "};
        if (line.back() != 'E')
            line += kTails[random() % std::size(kTails)];
        plain += line + (random() % 4 == 0 ? "\r\n" : "\n");
        indented += ' ' + line + " \n";
    }
    reading.nMessagesPerCode = 0;
    const auto fast = Read(plain);
    const std::vector<std::string> said = std::exchange(sink.lines, {});
    const auto slow = Read(indented);
    EXPECT_EQ(Described(*fast), Described(*slow));
    EXPECT_EQ(said, sink.lines);
    EXPECT_GT(said.size(), 100U);
    ASSERT_EQ(fast->GetFeatures()->GetSize(), 2000);
    for (__int64 i = 0; i < 2000; ++i)
    {
        const CJOBXlayObj* const a = fast->GetFeatures()->GetAt(i);
        const CJOBXlayObj* const b = slow->GetFeatures()->GetAt(i);
        EXPECT_EQ(a->GetSymbolNumber(), b->GetSymbolNumber());
        EXPECT_EQ(a->GetDcode(), b->GetDcode());
        const auto* const pad = RecordOfType<CJOBXlayObjPad>(a);
        if (pad == nullptr)
            continue;
        const auto& other = *RecordOfType<CJOBXlayObjPad>(b);
        EXPECT_EQ(pad->GetCenterPoint().x, other.GetCenterPoint().x);
        EXPECT_EQ(pad->GetRotationAngle(), other.GetRotationAngle());
        EXPECT_EQ(pad->GetOrientation(), other.GetOrientation());
        EXPECT_EQ(pad->GetResizeFactor(), other.GetResizeFactor());
    }
}

TEST_F(CompleteFeatures, HaveTextsAsTheyStandBetweenTheirQuotes)
{
    const std::pair<const char*, const char*> texts[] = {
        {"'it's'", "it's"}, {"''", ""}, {"'a;b'", "a;b"}, {"' x '", " x "}, {"'''", "'"}, {"plain", "plain"},
    };
    for (const auto& [written, text] : texts)
    {
        const auto layer = Read(std::string("T 1 2 font N 9 30 0.1 0.2 0.5 ") + written + " 2;;ID=4\n");
        ASSERT_EQ(layer->GetFeatures()->GetSize(), 1) << written;
        const auto& record = *RecordOfType<CJOBXlayObjText>(layer->GetFeatures()->GetAt(0));
        EXPECT_EQ(record.GetText(), text) << written;
        EXPECT_EQ(record.GetVersion(), 2) << written;
        EXPECT_EQ(record.GetRotationAngle(), 30.0);
        EXPECT_EQ(record.GetWidthFactor(), 0.5);
        EXPECT_EQ(record.GetID(), 4);
    }
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(CompleteFeatures, KnowTheirLinesWhetherTheyArePlainOrNot)
{
    const std::string text = "$0 r1\nL 1 2 3 4 0 P 0\n\nP 1 2 0 P 0 0\n L 1 2 3 4 0 P 0\nA 1 2 3 4 5 6 0 P 0 Y\n"
                             "T 1 2 standard P 0 0.1 0.1 1 'x' 1\r\nB 1 2 UPC39 s P 0 E 1 2 N N N Y B 'y'\n"
                             "S P 0\nOB 0 0 I\nOS 1 0\nOE\nSE\nP 1 2 0 P 0 8 45\n";
    const auto layer = Read(text);
    std::vector<int> lines;
    for (const CJOBXlayObj& feature : layer->GetFeatures()->Records())
        lines.push_back(feature.GetSourceLine());
    EXPECT_THAT(lines, ElementsAre(2, 4, 5, 6, 7, 8, 9, 14)) << "a surface has the one where it begins";
    CLineScanner scanner(text);
    CJOBXlayer classic;
    ReadFeatures(scanner, classic);
    EXPECT_EQ(classic.GetFeatures()->GetAt(0)->GetSourceLine(), 0) << "classic reading keeps none";
    EXPECT_EQ(classic.GetFeatures()->GetAt(6)->GetSourceLine(), 0);
}

TEST_F(CompleteFeatures, HaveEveryFieldOfABarcode)
{
    const auto layer = Read("B 1 2 UPC39 font N 8 45 E 0.1 0.2 Y N F S T 'it's' ;;ID=9\n");
    const auto& barcode = *RecordOfType<CJOBXlayObjBarcode>(layer->GetFeatures()->GetAt(0));
    EXPECT_EQ(barcode.m_sBarcodeName, "UPC39");
    EXPECT_EQ(barcode.m_sFontName, "font");
    EXPECT_EQ(barcode.GetPolarity(), "N");
    EXPECT_EQ(barcode.m_nOrientation, 8);
    EXPECT_EQ(barcode.GetRotationAngle(), 45.0);
    EXPECT_EQ(barcode.m_sEFlag, "E");
    EXPECT_EQ(barcode.m_dWidth, 0.1);
    EXPECT_EQ(barcode.m_dHeight, 0.2);
    EXPECT_EQ(barcode.m_sFasc, "Y");
    EXPECT_EQ(barcode.m_sCs, "N");
    EXPECT_EQ(barcode.m_sBg, "F");
    EXPECT_EQ(barcode.m_sAstr, "S");
    EXPECT_EQ(barcode.m_sAstrPosition, "T");
    EXPECT_EQ(barcode.m_sText, "it's");
    EXPECT_EQ(barcode.GetID(), 9);
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(CompleteFeatures, AreInTheUnitOfTheirFileAndSymbolsInTheirOwn)
{
    job.unit = JOBXunit::Millimetre;
    EXPECT_EQ(Read("")->GetUnit(), JOBXunit::Millimetre);
    EXPECT_EQ(Read("")->m_sUnits, "MM") << "also without a units line";
    EXPECT_EQ(Read("U INCH\n")->GetUnit(), JOBXunit::Inch);
    const auto layer = Read("UNITS=INCH\n$0 r1\n$1 oval1x2 M\n$2 oval1x2 I\n$3 r1 m\n");
    EXPECT_EQ(layer->m_sUnits, "INCH");
    EXPECT_EQ(layer->GetSymbolUnit(0), JOBXunit::Inch);
    EXPECT_EQ(layer->GetSymbolUnit(1), JOBXunit::Millimetre);
    EXPECT_EQ(layer->GetSymbolUnit(2), JOBXunit::Inch);
    EXPECT_EQ(layer->GetSymbolUnit(3), JOBXunit::Millimetre);
    EXPECT_EQ(layer->GetSymbolName(1), "oval1x2");
    EXPECT_EQ(Read("UNITS=MM\n$0 r1\n")->m_sUnits, "MM");
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(CompleteFeatures, SayWhatIsWrongWithFields)
{
    EXPECT_THAT(Said("$0 r1\nP 1 2 0\nL 1 2 3 4 0 P 0 9 8\nL 1 2 x 4 0 P 0\nL 1 2 3 4 0.5 P 0\nL 1 2 3 4 7 P 0\n"
                     "L 1 2 3 4 0 Q 0\nP 1 2 0 P 0 12\nP 1 2 0 P 0 8\nP 1 2 0 P 0 9 0.0\nA 1 2 3 4 5 6 0 P 0 Z\n"),
                ElementsAre("features:2: error FEA001 The record has too few fields.",
                            "features:3: warning FEA002 The record has too many fields, \"9 8\" last.",
                            "features:4: error FEA003 The field \"x\" is not a number.",
                            "features:5: error FEA003 The field \"0.5\" is not a number.",
                            "features:6: error FEA004 No symbol has the number 7.",
                            "features:7: warning FEA005 The format has no \"Q\" here.",
                            "features:8: warning FEA005 The format has no orientation 12.",
                            "features:9: error FEA001 The record has too few fields.",
                            "features:11: warning FEA005 The format has no \"Z\" here."));
}

TEST_F(CompleteFeatures, SayWhatIsWrongWithTables)
{
    EXPECT_THAT(Said("$x r1\n$0 r1 X\n$0 r2\n@ .smd\n&1a text\n@0 .smd\n@0 .drill\n"),
                ElementsAre("features:1: warning FEA006 The entry \"$x r1\" has no number.",
                            "features:2: warning FEA008 The unit \"X\" of the symbol \"r1\" is neither I nor M.",
                            "features:3: warning FEA007 The table has an entry \"$0\" already.",
                            "features:4: warning FEA006 The entry \"@ .smd\" has no number.",
                            "features:5: warning FEA006 The entry \"&1a text\" has no number.",
                            "features:7: warning FEA007 The table has an entry \"@0\" already."));
}

TEST_F(CompleteFeatures, KeepSurfacesAndContoursThatAreNeverClosedAndSaySo)
{
    const auto layer = Read("$0 r1\nS P 0\nOB 0 0 I\nOS 1 0\nOB 5 5 H\nOS 6 5\nP 1 2 0 P 0 0\nS P 0\nOB 0 0 I\n");
    EXPECT_THAT(Described(*layer), ElementsAre("S -1:", "P -1:", "S -1:"));
    const auto& surface = *RecordOfType<CJOBXlayObjSurface>(layer->GetFeatures()->GetAt(0));
    ASSERT_EQ(surface.GetContours()->GetSize(), 2);
    EXPECT_EQ(surface.GetContours()->GetAt(1)->GetODBlayObjOXArray()->GetSize(), 3);
    EXPECT_THAT(sink.lines, ElementsAre("features:2: warning FEA009 The surface is not closed.",
                                        "features:3: warning FEA010 The contour is not closed.",
                                        "features:5: warning FEA010 The contour is not closed.",
                                        "features:8: warning FEA009 The surface is not closed.",
                                        "features:9: warning FEA010 The contour is not closed."));
}

TEST_F(CompleteFeatures, SayWhenPartOfASurfaceStandsOutsideOfOne)
{
    EXPECT_THAT(
        Said("OB 0 0 I\nOS 1 2\nOC 1 2 3 4 Y\nOE\nSE\nS P 0\nOS 1 1\nSE\n"),
        ElementsAre(
            "features:1: error FEA011 No surface is open here.", "features:2: error FEA011 No contour is open here.",
            "features:3: error FEA011 No contour is open here.", "features:4: error FEA011 No contour is open here.",
            "features:5: error FEA011 No surface is open here.", "features:7: error FEA011 No contour is open here."));
}

TEST_F(CompleteFeatures, SayWhenAQuoteIsOpenOrTheNumberOfFeaturesIsAnother)
{
    EXPECT_THAT(Said("F 3\nT 1 2 standard P 0 0.1 0.1 1 'abc\n"),
                ElementsAre("features:1: warning FEA013 The file announces 3 features and has 1.",
                            "features:2: warning FEA012 The quote around the text is not closed."));
    EXPECT_THAT(Said("F 1\nT 1 2 standard P 0 0.1 0.1 1 'abc' 1\n"), IsEmpty());
    EXPECT_THAT(Said("F x\nF\n"), ElementsAre("features:1: error FEA003 The field \"x\" is not a number.",
                                              "features:2: error FEA001 The record has too few fields."));
}

TEST_F(CompleteFeatures, SayOnceOfEachUnknownRecordHowOftenItCame)
{
    EXPECT_THAT(Said("X 1\nLINE 1 2\nX 2\nOX 1\n"),
                ElementsAre("features:1: note FEA014 The record \"X\" is not known; there are 2 of them.",
                            "features:2: note FEA014 The record \"LINE\" is not known.",
                            "features:4: note FEA014 The record \"OX\" is not known."));
}

TEST_F(CompleteFeatures, SayForEachLineWhatIsWrongWithItsAttributes)
{
    EXPECT_THAT(Said(std::string(kTables) + "P 1 2 0 P 0 0;9\nP 1 2 0 P 0 0;9\nP 1 2 0 P 0 0;0;ID=4294967295\n"),
                ElementsAre("features:6: warning ATR001 No attribute name has the number 9.",
                            "features:7: warning ATR001 No attribute name has the number 9.",
                            "features:8: warning ATR006 The unique number \"4294967295\" is too large."));
}
} // namespace
