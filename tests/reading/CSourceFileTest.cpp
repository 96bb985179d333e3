#include "reading/CSourceFile.h"

#include "foundation/corekit/LzwEncoder.h"
#include "reading/RecordedMessages.h"
#include "support/TempDir.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
// An expander of a format made for the tests: the mark of gzip, then the text; a "!" at the end is damage.
class TestExpander : public CJOBXgzipExpander
{
public:
    bool Expand(std::string_view data, CJOBXblockTaker& taker) override
    {
        data.remove_prefix(2);
        return taker.Take(data) && !data.ends_with('!');
    }
};

class SourceFile : public testing::Test
{
protected:
    // The lines of the file "features" of the folder "top"; "-" when nothing could be read.
    std::vector<std::string> Lines(Presence presence = Presence::Needed)
    {
        const CReadingJob job{reading, CString(std::string_view(dir.Path()))};
        CMessageList messages(reading);
        const CReadingContext context{job, messages};
        CSourceFile file(context, CString(std::string_view(dir.Path("top"))), "features", presence);
        isThere = file.IsThere();
        messages.Deliver();
        if (!file.WasRead())
            return {"-"};
        std::vector<std::string> lines;
        while (file.Text().NextLine())
            lines.emplace_back(file.Text().Line());
        return lines;
    }

    TempDir dir;
    RecordedMessages sink;
    CJOBXreading reading = sink.Reading();
    TestExpander expander;
    bool isThere = false;
};

TEST_F(SourceFile, IsReadUnderItsNameInAnyLetterCase)
{
    dir.Write("top/FEATURES", "one\ntwo\n");
    EXPECT_THAT(Lines(), ElementsAre("one", "two"));
    dir.Write("top/features", "exact\n");
    EXPECT_THAT(Lines(), ElementsAre("exact"));
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(SourceFile, IsExpandedInMemoryAndNothingIsWritten)
{
    dir.Write("top/features.Z", EncodeLzw("one\ntwo\n"));
    EXPECT_THAT(Lines(), ElementsAre("one", "two"));
    EXPECT_THAT(sink.lines, IsEmpty());
    const std::filesystem::directory_iterator entries(dir.Path("top"));
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 1);
}

TEST_F(SourceFile, IsExpandedByItsContentWhateverItsName)
{
    reading.pGzipExpander = &expander;
    for (const char* const name : {"top/features", "top/features.Z", "top/features.GZ"})
    {
        dir.Write(name, "\x1F\x8Bpacked\n");
        EXPECT_THAT(Lines(), ElementsAre("packed")) << name;
        std::filesystem::remove(dir.Path(name));
    }
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(SourceFile, IsReportedWhenItIsMissingAndNeeded)
{
    dir.MakeDir("top");
    EXPECT_THAT(Lines(), ElementsAre("-"));
    EXPECT_FALSE(isThere);
    EXPECT_THAT(sink.lines, ElementsAre("top/features: error FIL001 The file is not there."));
    sink.lines.clear();
    EXPECT_THAT(Lines(Presence::Optional), ElementsAre("-"));
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(SourceFile, IsReportedWhenItCannotBeRead)
{
    dir.MakeDir("top/features");
    EXPECT_THAT(Lines(), ElementsAre("-"));
    EXPECT_TRUE(isThere);
    std::filesystem::remove(dir.Path("top/features"));
    std::filesystem::create_symlink("nowhere", dir.Path("top/features"));
    EXPECT_THAT(Lines(Presence::Optional), ElementsAre("-"));
    EXPECT_THAT(sink.lines, ElementsAre("top/features: error FIL002 The file cannot be read.",
                                        "top/features: error FIL002 The file cannot be read."));
}

TEST_F(SourceFile, IsReportedWhenItsCompressedDataIsDamaged)
{
    const std::string packed = EncodeLzw(std::string(10000, 'x') + "\n");
    dir.Write("top/features.Z", packed.substr(0, 2));
    EXPECT_THAT(Lines(), ElementsAre("-"));
    reading.pGzipExpander = &expander;
    dir.Write("top/features.Z", "\x1F\x8Btext!");
    EXPECT_THAT(Lines(), ElementsAre("-"));
    EXPECT_THAT(sink.lines, ElementsAre("top/features.Z: error FIL003 The compressed file is damaged or cut short.",
                                        "top/features.Z: error FIL003 The compressed file is damaged or cut short."));
}

TEST_F(SourceFile, IsReportedWhenNothingCanExpandIt)
{
    dir.Write("top/features.gz", "\x1F\x8Btext");
    EXPECT_THAT(Lines(), ElementsAre("-"));
    EXPECT_THAT(
        sink.lines,
        ElementsAre(
            "top/features.gz: error FIL004 The file is compressed by gzip, and this program cannot expand it."));
}

TEST_F(SourceFile, IsReportedWhenItExpandsToMoreThanTheLimit)
{
    reading.nExpansionLimit = 9999;
    reading.pGzipExpander = &expander;
    dir.Write("top/features.Z", EncodeLzw(std::string(10000, 'x')));
    EXPECT_THAT(Lines(), ElementsAre("-"));
    dir.Write("top/features.Z", "\x1F\x8B" + std::string(10000, 'x'));
    EXPECT_THAT(Lines(), ElementsAre("-"));
    EXPECT_THAT(sink.lines, ElementsAre("top/features.Z: error FIL005 The file expands to more than 9999 bytes.",
                                        "top/features.Z: error FIL005 The file expands to more than 9999 bytes."));
    reading.nExpansionLimit = 10000;
    EXPECT_THAT(Lines(), ElementsAre(std::string(10000, 'x')));
}

TEST_F(SourceFile, IsReportedWhenItIsNotText)
{
    std::string bytes;
    for (int i = 0; i < 1000; ++i)
        bytes += static_cast<char>(i * 7);
    dir.Write("top/features", bytes);
    EXPECT_THAT(Lines(), ElementsAre("-"));
    EXPECT_THAT(sink.lines, ElementsAre("top/features: error FIL006 The file is not text."));
}

TEST_F(SourceFile, MayHoldSomeEightBitTextAndAStrayControlCharacter)
{
    dir.Write("top/features", "#caf\xE9\x01 and a long enough comment\n");
    EXPECT_THAT(Lines(), ElementsAre("#caf\xE9\x01 and a long enough comment"));
    dir.Write("top/features", "");
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(sink.lines, IsEmpty());
}

TEST_F(SourceFile, IsReadPlainWhenItIsThereInTwoForms)
{
    dir.Write("top/features", "plain\n");
    dir.Write("top/features.Z", EncodeLzw("packed\n"));
    EXPECT_THAT(Lines(), ElementsAre("plain"));
    EXPECT_THAT(sink.lines,
                ElementsAre("top/features: warning FIL007 The file is also there as \"features.Z\", which is not "
                            "read and has other contents."));
}
} // namespace

TEST_F(SourceFile, HasAllItsLinesHoweverManyPiecesTheyTake)
{
    std::string text = "first\n";
    text += std::string(2 * CFilePieces::kPiece, 'x') + '\n';
    while (text.size() < 5 * CFilePieces::kPiece)
        text += "line " + std::to_string(text.size()) + '\n';
    text += "last";
    dir.Write("top/features", text);
    std::string joined;
    for (const std::string& line : Lines())
        joined += line + '\n';
    EXPECT_EQ(joined, text + '\n');
    dir.Write("top/features", "only");
    EXPECT_THAT(Lines(), ElementsAre("only"));
    dir.Write("top/features", "");
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(sink.lines, IsEmpty());
}
