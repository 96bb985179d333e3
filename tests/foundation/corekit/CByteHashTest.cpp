#include "foundation/corekit/CByteHash.h"

#include <gtest/gtest.h>

#include <string>

namespace
{
TEST(CByteHash, GivesThePublishedValues)
{
    EXPECT_EQ(CByteHash::Of(""), 0xEF46DB3751D8E999U);
    EXPECT_EQ(CByteHash::Of("a"), 0xD24EC4F1A98C6E5BU);
    EXPECT_EQ(CByteHash::Of("abc"), 0x44BC2CF5AD770999U);
    EXPECT_EQ(CByteHash::Of("Nobody inspects the spammish repetition"), 0xFBCEA83C8A378BF1U);
}

TEST(CByteHash, DoesNotDependOnThePieces)
{
    std::string bytes;
    for (int i = 0; i < 200; ++i)
        bytes += static_cast<char>(i * 7);
    for (std::size_t piece = 1; piece < 70; ++piece)
    {
        CByteHash hash;
        for (std::size_t at = 0; at < bytes.size(); at += piece)
            hash.Add(std::string_view(bytes).substr(at, piece));
        EXPECT_EQ(hash.Value(), CByteHash::Of(bytes)) << piece;
    }
}

TEST(CByteHash, ChangesWithEveryByte)
{
    const std::string bytes(100, 'x');
    for (std::size_t i = 0; i < bytes.size(); ++i)
    {
        std::string other = bytes;
        other[i] = 'y';
        EXPECT_NE(CByteHash::Of(other), CByteHash::Of(bytes)) << i;
    }
}
} // namespace
