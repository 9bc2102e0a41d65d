#include "controller_web/http/ByteRange.h"

#include <string>

#include <gtest/gtest.h>

using web::ByteRange;
using web::ReadByteRange;

namespace {

void ExpectPart(std::string_view header, std::uint64_t first, std::uint64_t length) {
    const ByteRange range = ReadByteRange(header, 1000);
    EXPECT_EQ(range.kind, ByteRange::Kind::Part) << header;
    EXPECT_EQ(range.first, first) << header;
    EXPECT_EQ(range.length, length) << header;
}

TEST(ByteRangeTest, BothEndsOneEndOrTheLastBytesAreAPart) {
    ExpectPart("bytes=0-99", 0, 100);
    ExpectPart("bytes=999-", 999, 1);
    ExpectPart("bytes=-100", 900, 100);
}

TEST(ByteRangeTest, APartEndsWithTheContent) {
    ExpectPart("bytes=990-5000", 990, 10);
    ExpectPart("bytes=-5000", 0, 1000);
}

TEST(ByteRangeTest, BeyondTheEndNothingCanBeSent) {
    EXPECT_EQ(ReadByteRange("bytes=1000-", 1000).kind, ByteRange::Kind::Unsatisfiable);
    EXPECT_EQ(ReadByteRange("bytes=-0", 1000).kind, ByteRange::Kind::Unsatisfiable);
    EXPECT_EQ(ReadByteRange("bytes=0-0", 0).kind, ByteRange::Kind::Unsatisfiable);
    EXPECT_EQ(ReadByteRange("bytes=-5", 0).kind, ByteRange::Kind::Unsatisfiable);
}

TEST(ByteRangeTest, OtherHeadersMeanTheWholeContent) {
    for (const char* const header : {"", "bytes", "bytes=", "bytes=-", "bytes=5-4", "lines=0-1", "bytes=0-1,4-5",
                                     "bytes=a-b", "bytes=+1-2", "bytes=1-99999999999999999999999", "bytes=0 - 1"}) {
        EXPECT_EQ(ReadByteRange(header, 1000).kind, ByteRange::Kind::Whole) << header;
    }
}

TEST(ByteRangeTest, TheHeaderOfTheAnswerNamesPartAndSize) {
    EXPECT_EQ(ReadByteRange("bytes=0-99", 1000).Header(1000), "bytes 0-99/1000");
    EXPECT_EQ(ReadByteRange("bytes=2000-", 1000).Header(1000), "bytes */1000");
}

} // namespace
