#include "foundation/corekit/LzwDecoder.h"
#include "foundation/corekit/LzwEncoder.h"

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <random>
#include <string>

namespace
{
constexpr ULONGLONG kNoLimit = ~0ULL;

struct Decoded
{
    LzwResult result;
    std::string text;
};

// From a buffer of exactly the data's size, so that the memory checker sees a read behind it.
Decoded Decode(std::string_view data, ULONGLONG limit = kNoLimit)
{
    const auto exact = std::make_unique<char[]>(data.size());
    std::memcpy(exact.get(), data.data(), data.size());
    Decoded decoded{LzwResult::Done, ""};
    decoded.result = DecodeLzw({exact.get(), data.size()}, limit,
                               [&decoded](std::string_view block)
                               {
                                   decoded.text += block;
                                   return true;
                               });
    return decoded;
}

std::string RandomText(std::size_t size, int letters, unsigned seed)
{
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> letter(0, letters - 1);
    std::string text(size, '\0');
    for (char& c : text)
        c = static_cast<char>(letter(random));
    return text;
}

std::string FeatureText(int lines, unsigned seed)
{
    std::mt19937 random(seed);
    std::string text;
    for (int i = 0; i < lines; ++i)
        text += "L " + std::to_string(random() % 1000) + "." + std::to_string(random() % 1000) + " 0.25 7 P 0\n";
    return text;
}

void ExpectRoundTrip(const std::string& text, const LzwOptions& options)
{
    const Decoded decoded = Decode(EncodeLzw(text, options));
    EXPECT_EQ(decoded.result, LzwResult::Done) << options.maxWidth << " bits, block mode " << options.blockMode;
    EXPECT_TRUE(decoded.text == text) << options.maxWidth << " bits, block mode " << options.blockMode;
}
} // namespace

TEST(LzwDecoder, Header_AloneIsAnEmptyFile)
{
    const Decoded decoded = Decode("\x1F\x9D\x90");
    EXPECT_EQ(decoded.result, LzwResult::Done);
    EXPECT_EQ(decoded.text, "");
}

TEST(LzwDecoder, Header_ThatIsNotTheFormatsIsDamaged)
{
    for (const std::string& data :
         {std::string(), std::string("\x1F"), std::string("\x1F\x9D"), std::string("\x1F\x8B\x90"),
          std::string("\x1F\x9D\x88"), std::string("\x1F\x9D\x91"), std::string("\x1F\x9D\x9F"),
          std::string("\x1F\x9D\x80"), std::string("plain text")})
        EXPECT_EQ(Decode(data).result, LzwResult::Damaged) << data;
}

TEST(LzwDecoder, Codes_AreReadLowestBitFirst)
{
    // 'a' (097), 'b' (098) in 9 bits each, then the entry "ab" (257).
    const Decoded decoded = Decode(std::string_view("\x1F\x9D\x90\x61\xC4\x04\x04", 7));
    EXPECT_EQ(decoded.result, LzwResult::Done);
    EXPECT_EQ(decoded.text, "abab");
}

TEST(LzwDecoder, Codes_MayNameTheEntryThatTheyMake)
{
    for (const int size : {2, 3, 4, 9, 10, 100, 70000})
        ExpectRoundTrip(std::string(static_cast<std::size_t>(size), 'a'), {});
}

TEST(LzwDecoder, Text_OfEveryWidthAndModeComesBack)
{
    const std::string texts[] = {"",
                                 "x",
                                 "abcabcabcabcabcabc",
                                 std::string(300000, 'z'),
                                 RandomText(90000, 256, 1),
                                 RandomText(100000, 2, 2),
                                 FeatureText(10000, 3)};
    for (unsigned width = 9; width <= 16; ++width)
        for (const bool blockMode : {true, false})
            for (const std::string& text : texts)
                ExpectRoundTrip(text, {width, blockMode, 0});
}

TEST(LzwDecoder, Clear_EmptiesTheTableWhereverItStands)
{
    const std::string text = FeatureText(1500, 4) + RandomText(20000, 256, 5) + FeatureText(1500, 6);
    for (const std::size_t every : {1U, 2U, 7U, 255U, 256U, 1000U, 65536U})
        for (const unsigned width : {9U, 12U, 16U})
            ExpectRoundTrip(text, {width, true, every});
}

TEST(LzwDecoder, Text_IsHandedOverInLargeBlocks)
{
    const std::string data = EncodeLzw(std::string(3000000, 'a'));
    int blocks = 0;
    std::size_t total = 0;
    const LzwResult result = DecodeLzw(data, kNoLimit,
                                       [&](std::string_view block)
                                       {
                                           ++blocks;
                                           total += block.size();
                                           return true;
                                       });
    EXPECT_EQ(result, LzwResult::Done);
    EXPECT_EQ(total, 3000000U);
    EXPECT_LE(blocks, 3);
}

TEST(LzwDecoder, Limit_IsExact)
{
    const std::string data = EncodeLzw(std::string(100000, 'a'));
    EXPECT_EQ(Decode(data, 100000).result, LzwResult::Done);
    EXPECT_EQ(Decode(data, 99999).result, LzwResult::TooLong);
    EXPECT_EQ(Decode(EncodeLzw(""), 0).result, LzwResult::Done);
    EXPECT_EQ(Decode(EncodeLzw("a"), 0).result, LzwResult::TooLong);
}

TEST(LzwDecoder, Limit_IsNeverPassedOn)
{
    const Decoded decoded = Decode(EncodeLzw(std::string(3000000, 'a')), 2000000);
    EXPECT_EQ(decoded.result, LzwResult::TooLong);
    EXPECT_LE(decoded.text.size(), 2000000U);
}

TEST(LzwDecoder, Output_ThatRefusesABlockEndsIt)
{
    const std::string data = EncodeLzw(std::string(3000000, 'a'));
    int calls = 0;
    EXPECT_EQ(DecodeLzw(data, kNoLimit,
                        [&calls](std::string_view)
                        {
                            ++calls;
                            return false;
                        }),
              LzwResult::Refused);
    EXPECT_EQ(calls, 1);
}

TEST(LzwDecoder, Codes_ThatCannotBeAreDamage)
{
    // As first code 300; 'a' and then 259, two ahead of the table; 'a' and then 256 without block mode is "aa".
    EXPECT_EQ(Decode(std::string_view("\x1F\x9D\x90\x2C\x01", 5)).result, LzwResult::Damaged);
    EXPECT_EQ(Decode(std::string_view("\x1F\x9D\x90\x61\x06\x02", 6)).result, LzwResult::Damaged);
    const Decoded plain = Decode(std::string_view("\x1F\x9D\x10\x61\x00\x02", 6));
    EXPECT_EQ(plain.result, LzwResult::Done);
    EXPECT_EQ(plain.text, "aaa");
}

TEST(LzwDecoder, End_InsideACodeIsDamage)
{
    const std::string data = EncodeLzw("abc"); // 27 bits in 4 bytes
    EXPECT_EQ(Decode(data.substr(0, data.size() - 1)).result, LzwResult::Damaged);
    EXPECT_EQ(Decode(EncodeLzw("abcdefgh")).result, LzwResult::Done); // 72 bits fill 9 bytes
    EXPECT_EQ(Decode(EncodeLzw("abcdefgh") + '\0').result, LzwResult::Damaged) << "more is left than fills a byte";
    std::string filled = data;
    filled.back() = static_cast<char>(static_cast<unsigned char>(filled.back()) | 0x80U);
    EXPECT_EQ(Decode(filled).result, LzwResult::Damaged) << "the rest of the last byte must be zero";
}

TEST(LzwDecoder, End_AtAnyByteIsDamageOrGivesTheStartOfTheText)
{
    const std::string text = FeatureText(200, 7);
    const std::string data = EncodeLzw(text, {10, true, 1500});
    std::size_t damaged = 0;
    for (std::size_t size = 0; size < data.size(); ++size)
    {
        const Decoded decoded = Decode(std::string_view(data).substr(0, size));
        damaged += decoded.result == LzwResult::Damaged ? 1 : 0;
        EXPECT_TRUE(text.starts_with(decoded.text)) << size;
        EXPECT_LT(decoded.text.size(), text.size());
    }
    EXPECT_GT(damaged, data.size() / 2);
}

TEST(LzwDecoder, DamagedBytes_NeverLeadOutsideTheBuffers)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const std::string data = EncodeLzw(FeatureText(300, seed), {12, true, 3000});
    int damaged = 0;
    for (unsigned round = 0; round < 3000; ++round)
    {
        std::string copy = data;
        for (unsigned i = 0; i <= round % 5; ++i)
            copy[2 + random() % (copy.size() - 2)] = static_cast<char>(random());
        damaged += Decode(copy, 1U << 24U).result == LzwResult::Damaged ? 1 : 0;
    }
    EXPECT_GT(damaged, 0);
}

TEST(LzwDecoder, RandomBytes_NeverLeadOutsideTheBuffers)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    for (unsigned round = 0; round < 2000; ++round)
    {
        std::string data = RandomText(round, 256, seed + round);
        data.insert(0, std::string("\x1F\x9D") + static_cast<char>(9 + round % 8 + (round % 3 == 0 ? 0x80 : 0)));
        const Decoded decoded = Decode(data, 1U << 24U);
        EXPECT_LE(decoded.text.size(), 1U << 24U);
    }
}
