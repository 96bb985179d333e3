#include "FeaturesText.h"

#include "Random.h"
#include "TextFile.h"

#include <algorithm>
#include <array>
#include <string>

namespace
{
constexpr std::uint32_t kFeatureBytes = 73; // rounded up
constexpr std::uint32_t kFeaturesForText = 96;
constexpr std::uint32_t kFeaturesInRow = 15;
constexpr std::uint32_t kStandardSymbols = 26;
constexpr std::uint32_t kListedUserSymbols = 6;
constexpr std::uint32_t kSymbolFeatures = 40;

enum class Kind
{
    Line,
    Pad,
    Surface,
    Arc,
    Text,
    Barcode
};

// Shares of a thousand, in the order of the kinds.
constexpr std::array<std::uint32_t, 6> kKinds{902, 84, 9, 3, 1, 1};

// Shares of lists with 0, 1, 2, 3 and 4 attributes.
constexpr std::array<std::uint32_t, 5> kLineLists{133, 85, 0, 618, 164};
constexpr std::array<std::uint32_t, 5> kPadLists{2, 93, 544, 361, 0};
constexpr std::array<std::uint32_t, 5> kSurfaceLists{119, 874, 7, 0, 0};
constexpr std::array<std::uint32_t, 5> kArcLists{670, 330, 0, 0, 0};

// Shares of coordinates with 1 to 8 decimals; of those with 8 a few get more.
constexpr std::array<std::uint32_t, 8> kDecimals{10, 55, 115, 60, 25, 80, 130, 525};
constexpr std::array<std::int64_t, 8> kSteps{10'000'000, 1'000'000, 100'000, 10'000, 1'000, 100, 10, 1};

struct Point
{
    std::int64_t x = 0;
    std::int64_t y = 0;
};

// What a file's records draw from.
struct Source
{
    TextFile& file;
    Random& random;
    JobCounts& counts;
    std::uint32_t symbols = 1;
    std::uint32_t texts = 1;
    bool uniqueNumbers = false;
};

// A coordinate's text depends on its value alone, so that a line begins with the text that the last one ended with.
void PutCoordinate(Source& source, std::int64_t value)
{
    constexpr std::int64_t kFullLengthsForLonger = 21;
    source.file << ' ';
    if (value % 10 == 0 || value % kFullLengthsForLonger != 0)
        source.file << Length{value};
    else
        source.file.PrintLong(Length{value}, Random(static_cast<std::uint64_t>(value)).Chance(400) ? 375U : 9365U);
}

void PutPoint(Source& source, Point point)
{
    PutCoordinate(source, point.x);
    PutCoordinate(source, point.y);
}

std::int64_t Between(Random& random, std::int64_t low, std::int64_t high)
{
    const std::int64_t step = kSteps[random.Pick(kDecimals)];
    return (low + static_cast<std::int64_t>(random.Below(static_cast<std::uint32_t>(high - low)))) / step * step;
}

Point AnyPoint(Random& random)
{
    return {Between(random, 1'000'000, 1'100'000'000), Between(random, -850'000'000, 950'000'000)};
}

Point Near(Random& random, Point point)
{
    constexpr std::int64_t kFar = 5'000'000;
    return {Between(random, point.x - kFar, point.x + kFar), Between(random, point.y - kFar, point.y + kFar)};
}

const char* Polarity(Random& random)
{
    return random.Chance(990) ? " P 0" : " N 0";
}

// The attribute list that the features of a row share.
struct AttributeList
{
    std::string text;
    std::int64_t count = 0;

    void Add(const std::string& item)
    {
        text += text.empty() ? ";" : ",";
        text += item;
        ++count;
    }
};

// What else is in a list follows from its text, as all strokes of one text are alike.
AttributeList LineList(Source& source)
{
    AttributeList list;
    const std::uint32_t text = source.random.Below(source.texts);
    Random random(text);
    const std::size_t count = random.Pick(kLineLists);
    if (count >= 3)
        list.Add("0");
    if (count == 4)
        list.Add("1");
    if (count >= 1)
        list.Add("2=" + std::to_string(text));
    if (count >= 3)
        list.Add("3=" + std::to_string(90 * random.Below(4)) + ".000000");
    return list;
}

AttributeList PadList(Source& source)
{
    AttributeList list;
    const std::uint32_t text = source.random.Below(source.texts);
    Random random(text);
    const std::size_t count = random.Pick(kPadLists);
    if (count == 3)
        list.Add("5");
    if (count >= 1)
        list.Add("4=" + std::to_string(random.Below(5)));
    if (count >= 2)
        list.Add("6=" + std::to_string(text));
    return list;
}

AttributeList ShortList(Source& source, const std::array<std::uint32_t, 5>& shares)
{
    AttributeList list;
    const std::size_t count = source.random.Pick(shares);
    if (count >= 1)
        list.Add("5");
    if (count >= 2)
        list.Add("6=" + std::to_string(source.random.Below(source.texts)));
    return list;
}

AttributeList ListOf(Source& source, Kind kind)
{
    switch (kind)
    {
    case Kind::Line:
        return LineList(source);
    case Kind::Pad:
        return PadList(source);
    case Kind::Surface:
        return ShortList(source, kSurfaceLists);
    case Kind::Arc:
    case Kind::Text:
    case Kind::Barcode:
        return ShortList(source, kArcLists);
    }
    return {};
}

void PutLine(Source& source, Point& end, const AttributeList& list)
{
    const Point start = source.random.Chance(800) ? end : AnyPoint(source.random);
    end = Near(source.random, start);
    source.file << 'L';
    PutPoint(source, start);
    PutPoint(source, end);
    source.file << ' ' << source.random.Below(source.symbols) << Polarity(source.random) << list.text << '\n';
    ++source.counts.lines;
}

void PutPad(Source& source, const AttributeList& list)
{
    source.file << 'P';
    PutPoint(source, AnyPoint(source.random));
    source.file << ' ' << source.random.Below(source.symbols) << Polarity(source.random);
    if (source.random.Chance(900))
        source.file << " 8 0";
    else
        source.file << ' ' << source.random.Below(4);
    source.file << list.text << '\n';
    ++source.counts.pads;
}

void PutArc(Source& source, const AttributeList& list)
{
    const Point start = AnyPoint(source.random);
    source.file << 'A';
    PutPoint(source, start);
    PutPoint(source, Near(source.random, start));
    PutPoint(source, Near(source.random, start));
    source.file << ' ' << source.random.Below(source.symbols) << Polarity(source.random)
                << (source.random.Chance(500) ? " Y" : " N") << list.text << '\n';
    ++source.counts.arcs;
}

void PutContour(Source& source, bool island)
{
    Point at = AnyPoint(source.random);
    source.file << "OB";
    PutPoint(source, at);
    source.file << (island ? " I\n" : " H\n");
    const std::uint32_t points = 4 + source.random.Below(13);
    for (std::uint32_t i = 0; i < points; ++i)
    {
        at = Near(source.random, at);
        const bool ofArc = source.random.Chance(200);
        source.file << (ofArc ? "OC" : "OS");
        PutPoint(source, at);
        if (ofArc)
        {
            PutPoint(source, Near(source.random, at));
            source.file << (source.random.Chance(500) ? " Y" : " N");
        }
        source.file << '\n';
    }
    source.file << "OE\n";
    ++source.counts.contours;
    source.counts.contourElements += points + 2; // with its begin and its end
}

void PutSurface(Source& source, const AttributeList& list)
{
    source.file << "S P 0" << list.text << '\n';
    PutContour(source, true);
    for (int holes = 0; holes < 5 && source.random.Chance(490); ++holes)
        PutContour(source, false);
    source.file << "SE\n";
    ++source.counts.surfaces;
}

void PutText(Source& source, const AttributeList& list)
{
    source.file << 'T';
    PutPoint(source, AnyPoint(source.random));
    source.file << " standard P " << source.random.Below(8) << " 0.05 0.06 0.583333 'REV " << source.random.Below(1000)
                << "' 1" << list.text << '\n';
    ++source.counts.texts;
}

void PutBarcode(Source& source, const AttributeList& list)
{
    source.file << 'B';
    PutPoint(source, AnyPoint(source.random));
    source.file << " UPC39 standard P " << source.random.Below(8) << " E 0.01 0.25 N Y Y N T 'LOT"
                << source.random.Below(1000) << '\'' << list.text << '\n';
    ++source.counts.barcodes;
}

// With a number behind it that no other feature of its layer has.
AttributeList WithNumber(AttributeList list, std::int64_t number)
{
    constexpr std::int64_t kFirst = 60'000;
    list.text += (list.text.empty() ? ";;ID=" : ";ID=") + std::to_string(kFirst + number);
    return list;
}

void PutFeature(Source& source, Kind kind, Point& end, const AttributeList& attributes)
{
    const AttributeList list = source.uniqueNumbers ? WithNumber(attributes, source.counts.features) : attributes;
    switch (kind)
    {
    case Kind::Line:
        PutLine(source, end, list);
        break;
    case Kind::Pad:
        PutPad(source, list);
        break;
    case Kind::Surface:
        PutSurface(source, list);
        break;
    case Kind::Arc:
        PutArc(source, list);
        break;
    case Kind::Text:
        PutText(source, list);
        break;
    case Kind::Barcode:
        PutBarcode(source, list);
        break;
    }
    ++source.counts.features;
    source.counts.featureAttributes += list.count;
}

void PutHeading(TextFile& file, const char* heading)
{
    file << "\n#\n#" << heading << "\n#\n";
}

std::uint32_t PutSymbolTable(TextFile& file, const JobPlan& plan, Random& random)
{
    PutHeading(file, "Feature symbol names");
    std::uint32_t number = 0;
    for (; number < kStandardSymbols; ++number)
    {
        file << '$' << number;
        if (random.Chance(700))
            file << " r" << 2 + random.Below(120) << '\n';
        else
            file << " rect" << 5 + random.Below(200) << 'x' << 5 + random.Below(200) << '\n';
    }
    const auto listed = std::min(kListedUserSymbols, static_cast<std::uint32_t>(plan.symbols));
    for (std::uint32_t i = 0; i < listed; ++i, ++number)
        file << '$' << number << " user" << random.Below(static_cast<std::uint32_t>(plan.symbols)) << '\n';
    return number;
}

void PutAttributeTables(TextFile& file, std::uint32_t texts, Random& random)
{
    PutHeading(file, "Feature attribute names");
    constexpr std::array kNames{".nomenclature", ".string_mirrored", ".string", ".string_angle", ".pad_usage",
                                ".smd",          ".geometry"};
    for (std::size_t i = 0; i < kNames.size(); ++i)
        file << '@' << i << ' ' << std::string_view(kNames[i]) << '\n';
    PutHeading(file, "Feature attribute text strings");
    constexpr std::array kNouns{"R", "C", "U", "TP", "VIA-R19C8", "SMD_60X45"};
    for (std::uint32_t i = 0; i < texts; ++i)
        file << '&' << i << ' ' << std::string_view(kNouns[random.Below(kNouns.size())]) << i << '\n';
}
} // namespace

void WriteLayerFeatures(const std::filesystem::path& path, std::uint64_t bytes, const JobPlan& plan, Random& random,
                        JobCounts& counts)
{
    TextFile file(path);
    Source source{file, random, counts};
    source.uniqueNumbers = plan.uniqueNumbers;
    file << "#\n#Units\n#\nU INCH\n";
    source.symbols = PutSymbolTable(file, plan, random);
    source.texts = 1 + FeaturesOf(bytes) / kFeaturesForText;
    PutAttributeTables(file, source.texts, random);
    PutHeading(file, "Layer features");
    Point end = AnyPoint(random);
    while (file.Size() < bytes)
    {
        const auto kind = static_cast<Kind>(random.Pick(kKinds));
        const AttributeList list = ListOf(source, kind);
        for (std::uint32_t left = 1 + random.Below(2 * kFeaturesInRow - 1); left > 0 && file.Size() < bytes; --left)
            PutFeature(source, kind, end, list);
    }
    counts.bytes += file.Close();
    ++counts.files;
    ++counts.layers;
}

void WriteSymbolFeatures(const std::filesystem::path& path, Random& random, JobCounts& counts)
{
    JobCounts own; // a symbol's features are none of the layers'
    TextFile file(path);
    Source source{file, random, own};
    file << "#\n#Units\n#\nU INCH\n";
    PutHeading(file, "Feature symbol names");
    file << "$0 r5\n";
    PutHeading(file, "Layer features");
    Point end = AnyPoint(random);
    for (std::uint32_t i = 0; i < kSymbolFeatures; ++i)
        PutFeature(source, static_cast<Kind>(random.Pick(kKinds)), end, {});
    counts.bytes += file.Close();
    ++counts.files;
    ++counts.symbols;
    counts.symbolFeatures += own.features;
}

void WriteProfile(const std::filesystem::path& path, JobCounts& counts)
{
    TextFile file(path);
    file << "#\n#Units\n#\nU INCH\n#\n#Layer features\n#\nS P 0\nOB 0 -8.5 I\nOS 0 9.5\nOS 11 9.5\nOS 11 -8.5\n"
            "OS 0 -8.5\nOE\nSE\n";
    counts.bytes += file.Close();
    ++counts.files;
}

std::uint32_t FeaturesOf(std::uint64_t bytes)
{
    return static_cast<std::uint32_t>(bytes / kFeatureBytes);
}
