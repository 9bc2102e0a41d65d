#include "formats/json/Writing.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

std::wstring JsonOf(std::wstring_view text) {
    std::wstring json;
    json::AppendText(text, json);
    return json;
}

/// The JSON of a text, put together from that of its elements.
std::wstring JsonOfEach(std::wstring_view text) {
    std::wstring json = L"\"";
    for (const wchar_t element : text) {
        const std::wstring one = JsonOf({&element, 1});
        json += one.substr(1, one.size() - 2);
    }
    return json + L'"';
}

} // namespace

TEST(WritingTest, EachElementIsEscapedWhereverItStands) {
    for (const wchar_t element : {L'"', L'\\', L'\n', wchar_t{0}, wchar_t{0x1F}, wchar_t{0x20}, wchar_t{0xD7FF},
                                  wchar_t{0xD800}, wchar_t{0xDFFF}, wchar_t{0xE000}}) {
        for (const std::size_t length : {1U, 15U, 16U, 17U, 40U, 255U, 256U, 257U, 300U, 513U}) {
            for (std::size_t place = 0; place < length; ++place) {
                std::wstring text(length, L'a');
                text[place] = element;
                ASSERT_EQ(JsonOf(text), JsonOfEach(text)) << length << ' ' << place;
            }
        }
    }
}

TEST(WritingTest, TextOfEscapesOnlyIsTwiceAsLong) {
    for (const std::size_t length : {16U, 256U, 257U, 1000U}) {
        std::wstring json = JsonOf(std::wstring(length, L'\\'));
        EXPECT_EQ(json, L'"' + std::wstring(2 * length, L'\\') + L'"');
    }
}

TEST(WritingTest, EscapeIsPutWhereTheEndOfATextIsCopiedAsABlock) {
    for (std::size_t length = 16; length < 50; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            std::wstring text(length, L'a');
            text[place] = L'\\';
            text[length - 1 - place] = L'"';
            ASSERT_EQ(JsonOf(text), JsonOfEach(text)) << length << ' ' << place;
        }
    }
}

TEST(WritingTest, LongListIsThatOfItsElementsOneByOne) {
    std::vector<std::wstring> texts;
    std::wstring expected;
    for (std::size_t number = 0; number < 2000; ++number) {
        texts.push_back(std::wstring(number % 100, L'a') + L"\\" + std::to_wstring(number));
        expected += (number == 0 ? L"[" : L",") + JsonOf(texts.back());
    }
    EXPECT_EQ(json::Write(texts), expected + L"]");
}

TEST(WritingTest, TextIsAppendedBehindWhatIsThere) {
    std::wstring json = L"[";
    json::AppendText(L"a", json);
    json += L',';
    json::Append(true, json);
    json += L',';
    json::AppendText(std::wstring(100, L'b') + L"\n", json);
    EXPECT_EQ(json, L"[\"a\",true,\"" + std::wstring(100, L'b') + L"\\n\"");
}

TEST(WritingTest, NothingIsLeftOfATextThatBecomesAListOfCodePoints) {
    const std::wstring text = std::wstring(300, L'a') + wchar_t{0xD83D} + wchar_t{0xDE00};
    const std::wstring json = JsonOf(text);
    // Of UTF-16, the pair is a character.
    EXPECT_TRUE(json.starts_with(sizeof(wchar_t) == 2 ? L"\"aaa" : L"{\"codePoints\":[97,97,"));
    EXPECT_TRUE(json.ends_with(sizeof(wchar_t) == 2 ? L"\"" : L",55357,56832]}"));
}

TEST(WritingTest, NumbersOfAnyLengthAreDecimal) {
    std::wstring json;
    for (const std::int64_t number : {std::int64_t{0}, std::int64_t{-7}, std::int64_t{9223372036854775807}}) {
        json::AppendNumber(number, json);
        json += L' ';
    }
    EXPECT_EQ(json, L"0 -7 9223372036854775807 ");
}
