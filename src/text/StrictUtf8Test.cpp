#include "text/StrictUtf8.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "text/Text.h"
#include "text/Wtf8.h"

namespace {

using text::EncodeUtf8;
using text::FindInvalidUtf8;
using text::FromStrictUtf8;
using text::FromWtf8;

/// The four bytes of a number.
std::string Bytes(std::uint32_t number) {
    std::string bytes;
    for (const int shift : {24, 16, 8, 0}) {
        bytes += static_cast<char>(number >> shift & 0xFF);
    }
    return bytes;
}

/// First and second bytes of each kind, with or without continuation bytes.
template <typename Check>
void ForAllBeginnings(const Check& check) {
    for (std::uint32_t beginning = 0; beginning <= 0xFFFF; ++beginning) {
        for (const std::uint32_t rest : {0x8080U, 0xBFBFU, 0x8041U, 0x4180U, 0x4141U}) {
            check(Bytes(beginning << 16 | rest));
        }
    }
}

TEST(StrictUtf8Test, WhatIsFoundInvalidIsWhatCannotBeDecoded) {
    ForAllBeginnings([](const std::string& bytes) {
        ASSERT_EQ(FindInvalidUtf8(bytes).has_value(), !FromStrictUtf8(bytes).has_value())
            << testing::PrintToString(bytes);
    });
}

TEST(StrictUtf8Test, OnlySurrogatesAreValidInWtf8Alone) {
    ForAllBeginnings([](const std::string& bytes) {
        const std::optional<std::wstring> decoded = FromWtf8(bytes);
        std::string again;
        std::size_t badAt = 0;
        const bool isStrict = decoded && EncodeUtf8(*decoded, again, badAt);
        ASSERT_EQ(isStrict, !FindInvalidUtf8(bytes).has_value()) << testing::PrintToString(bytes);
        ASSERT_TRUE(!isStrict || again == bytes) << testing::PrintToString(bytes);
    });
}

TEST(StrictUtf8Test, TheFirstInvalidByteIsFoundBehindAsciiOfAnyLength) {
    for (std::size_t length = 0; length < 50; ++length) {
        const std::string valid = std::string(length, 'a') + "\xC3\xA9";
        EXPECT_EQ(FindInvalidUtf8(valid), std::nullopt);
        EXPECT_EQ(FindInvalidUtf8(valid + "\xC3"), valid.size());
    }
}

TEST(StrictUtf8Test, TheElementThatIsNoCharacterIsNamed) {
    std::string utf8;
    std::size_t badAt = 0;
    EXPECT_FALSE(EncodeUtf8(std::wstring(20, L'a') + L'\xDC80' + L"b", utf8, badAt));
    EXPECT_EQ(badAt, 20U);
}

TEST(StrictUtf8Test, CharactersAreEncodedWhereverTheyStand) {
    const std::wstring character = text::FromUtf8("\xF0\x9F\x98\x80");
    for (const std::size_t border : {0U, 16U, 64U, 80U, 16'384U, 32'768U}) {
        for (std::size_t before = border - std::min<std::size_t>(border, 3); before < border + 3; ++before) {
            for (const std::size_t after : {0U, 1U, 15U, 64U, 16'384U}) {
                std::string utf8;
                std::size_t badAt = 0;
                ASSERT_TRUE(
                    EncodeUtf8(std::wstring(before, L'a') + character + std::wstring(after, L'b'), utf8, badAt));
                ASSERT_EQ(utf8, std::string(before, 'a') + "\xF0\x9F\x98\x80" + std::string(after, 'b'));
            }
        }
    }
}

TEST(StrictUtf8Test, LongTextOfLongCharactersIsEncoded) {
    const std::string euros = [] {
        std::string bytes;
        for (int i = 0; i < 50'000; ++i) {
            bytes += "\xE2\x82\xAC";
        }
        return bytes;
    }();
    std::string utf8;
    std::size_t badAt = 0;
    ASSERT_TRUE(EncodeUtf8(*FromStrictUtf8(euros), utf8, badAt));
    EXPECT_TRUE(utf8 == euros);
}

TEST(StrictUtf8Test, NothingIsLeftOfALongerTextThatWasEncodedBefore) {
    std::string utf8;
    std::size_t badAt = 0;
    EXPECT_TRUE(EncodeUtf8(std::wstring(1000, L'a'), utf8, badAt));
    EXPECT_TRUE(EncodeUtf8(L"b", utf8, badAt));
    EXPECT_EQ(utf8, "b");
    EXPECT_TRUE(EncodeUtf8(L"", utf8, badAt));
    EXPECT_EQ(utf8, "");
}

} // namespace
