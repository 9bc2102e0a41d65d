#include "text/StrictUtf8.h"

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

} // namespace
