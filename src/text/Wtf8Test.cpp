#include "text/Wtf8.h"

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using text::AppendWtf8;
using text::FromWtf8;

using namespace std::string_literals;

std::string Encoded(const std::wstring& text) {
    std::string bytes;
    AppendWtf8(bytes, text);
    return bytes;
}

std::wstring Unit(unsigned value) {
    return std::wstring(1, static_cast<wchar_t>(value));
}

struct Pair {
    std::wstring text;
    std::string bytes;
};

const std::vector<Pair> pairs{
    {L"", ""},
    {L"{\"a\":1}", "{\"a\":1}"},
    {std::wstring(1, L'\0'), "\0"s},
    {L"\u007f\u0080", "\x7F\xC2\x80"},
    {L"\u07ff\u0800", "\xDF\xBF\xE0\xA0\x80"},
    {L"\ufffd\uffff", "\xEF\xBF\xBD\xEF\xBF\xBF"},
    {L"\U00010000\U0001f600\U0010ffff", "\xF0\x90\x80\x80\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF"},
    {Unit(0xD800), "\xED\xA0\x80"},
    {Unit(0xDBFF) + L"x", "\xED\xAF\xBFx"},
    {Unit(0xDC00) + Unit(0xD800), "\xED\xB0\x80\xED\xA0\x80"},
    {L"name" + Unit(0xDC80) + Unit(0xDCFF), "name\xED\xB2\x80\xED\xB3\xBF"},
};

TEST(Wtf8Test, TextIsEncodedAndComesBackUnchanged) {
    for (const Pair& pair : pairs) {
        EXPECT_EQ(Encoded(pair.text), pair.bytes);
        EXPECT_EQ(FromWtf8(pair.bytes), pair.text);
    }
}

TEST(Wtf8Test, EverySingleUnitSurvives) {
    for (unsigned value = 0; value <= 0xFFFF; ++value) {
        ASSERT_EQ(FromWtf8(Encoded(Unit(value))), Unit(value)) << value;
    }
}

TEST(Wtf8Test, TwoHalvesOfACharacterSurvive) {
    const std::wstring halves = Unit(0xD83D) + Unit(0xDE00);
    EXPECT_EQ(FromWtf8(Encoded(halves)), halves);
}

TEST(Wtf8Test, EncodingAppends) {
    std::string bytes = "before ";
    AppendWtf8(bytes, L"after");
    EXPECT_EQ(bytes, "before after");
}

TEST(Wtf8Test, BytesThatAreNoTextAreRefused) {
    const std::vector<std::string> refused{
        "\x80",             // continuation without a lead
        "a\xBF",            //
        "\xC3",             // truncated
        "\xE2\x82",         //
        "\xF0\x9F\x98",     //
        "\xC3(",            // continuation missing
        "\xE2(\xA1",        //
        "\xC0\x80",         // overlong
        "\xC1\xBF",         //
        "\xE0\x9F\xBF",     //
        "\xF0\x8F\xBF\xBF", //
        "\xF4\x90\x80\x80", // beyond U+10FFFF
        "\xF8\x88\x80\x80\x80",
        "\xFE",
        "\xFF",
    };
    for (const std::string& bytes : refused) {
        EXPECT_EQ(FromWtf8(bytes), std::nullopt) << testing::PrintToString(bytes);
    }
}

} // namespace
