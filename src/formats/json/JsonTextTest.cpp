#include <gtest/gtest.h>

#include "formats/RunProtocol.h"

namespace {

/// The error in a run request; empty if there is none.
std::wstring ProblemOf(const std::wstring& json) {
    run_protocol::RunScenarioInfo info;
    std::wstring problem;
    const bool isGood = run_protocol::ParseRunScenarioInfo(json, info, problem);
    EXPECT_EQ(isGood, problem.empty());
    return problem;
}

std::wstring JobIdOf(const std::wstring& json) {
    run_protocol::RunScenarioInfo info;
    std::wstring problem;
    EXPECT_TRUE(run_protocol::ParseRunScenarioInfo(json, info, problem));
    return info.jobId;
}

std::wstring Nested(std::size_t levels) {
    return L"{\"unknown\":" + std::wstring(levels, L'[') + std::wstring(levels, L']') + L"}";
}

} // namespace

TEST(JsonTextTest, StrictJsonIsAccepted) {
    for (const wchar_t* json : {L"{}", L" \t\r\n{\t} \n", L"\ufeff{}", L"{\"a\":[1,-0,0.5,1e5,1E-5,-1.25e+3]}",
                                L"{\"a\":[true,false,null,{},[],\"\"]}", L"{\"\":0,\"\":1}",
                                LR"({"a":"\"\\\/\b\f\n\r\t\u00e9\ud83d\ude00"})"}) {
        EXPECT_EQ(ProblemOf(json), L"") << json;
    }
}

TEST(JsonTextTest, AnythingElseIsRefused) {
    for (const wchar_t* json : {L"",
                                L" ",
                                L"{",
                                L"}",
                                L"{]",
                                L"{a:1}",
                                L"{'a':1}",
                                L"{\"a\"}",
                                L"{\"a\":}",
                                L"{\"a\":1,}",
                                L"{,}",
                                L"{\"a\":1 \"b\":2}",
                                L"{\"a\":[1,]}",
                                L"{\"a\":[,1]}",
                                L"{\"a\":01}",
                                L"{\"a\":+1}",
                                L"{\"a\":.5}",
                                L"{\"a\":1.}",
                                L"{\"a\":1e}",
                                L"{\"a\":-}",
                                L"{\"a\":0x10}",
                                L"{\"a\":NaN}",
                                L"{\"a\":Infinity}",
                                L"{\"a\":True}",
                                L"{\"a\":nul}",
                                L"{\"a\":\"}",
                                L"{\"a\":\"\t\"}",
                                L"{\"a\":\"\x1f\"}",
                                L"{\"a\":\"\\x\"}",
                                L"{\"a\":\"\\u12\"}",
                                L"{\"a\":\"\\u12g4\"}",
                                L"{\"a\":\"\\uD8\"}",
                                L"{\"a\":\"\\ud83d\\u\"}",
                                L"{} {}",
                                L"{} x",
                                L"{}\ufeff",
                                L"// comment\n{}",
                                L"{/**/}"}) {
        EXPECT_NE(ProblemOf(json), L"") << json;
    }
}

TEST(JsonTextTest, AProblemTellsPlaceMemberAndWhatWasExpected) {
    const std::pair<const wchar_t*, const wchar_t*> table[] = {
        {L"", L"line 1, column 1: not JSON: The document is empty"},
        {L"{\"a\":1,\n \"b\":x}", L"line 2, column 6: not JSON: Invalid value"},
        {L"[]", L"line 1, column 1: expected an object, found a list"},
        {L"{\"jobId\":5}", L"line 1, column 10: jobId: expected text, found a number"},
        {L"{\"jobId\": null}", L"line 1, column 11: jobId: expected text, found null"},
        {L"{\"jobId\": false}", L"line 1, column 11: jobId: expected text, found false"},
        {L"{\"jobId\":\n\ttrue}", L"line 2, column 2: jobId: expected text, found true"},
        {L"{\"jobId\":[\"\"]}", L"line 1, column 10: jobId: expected text, found a list"},
        {L"{\"inputFiles\":\"a\"}", L"line 1, column 15: inputFiles: expected a list, found text"},
        {L"{\"inputFiles\":[\"\u00e9\U0001F600\", 7]}",
         L"line 1, column 22: inputFiles[1]: expected text, found a number"},
        {L"{\"jobId\":\"a\", \"jobId\":\"a\"}", L"line 1, column 15: the member \"jobId\" is repeated"},
        {L"{\"version\":2}",
         L"line 1, column 12: version: expected version 1, the newest that this program knows, found 2"},
        {L"{\"version\":\"1\"}",
         L"line 1, column 12: version: expected version 1, the newest that this program knows, found text"},
    };
    for (const auto& [json, problem] : table) {
        EXPECT_EQ(ProblemOf(json), problem) << json;
    }
}

TEST(JsonTextTest, AMissingVersionIsTheFirst) {
    EXPECT_EQ(ProblemOf(L"{}"), L"");
    EXPECT_EQ(ProblemOf(L"{\"version\":1}"), L"");
    EXPECT_NE(ProblemOf(L"{\"version\":0}"), L"");
    EXPECT_NE(ProblemOf(L"{\"version\":-1}"), L"");
    EXPECT_NE(ProblemOf(L"{\"version\":1.0}"), L"");
    EXPECT_NE(ProblemOf(L"{\"version\":4294967297}"), L"");
}

TEST(JsonTextTest, ATextBehindACharacterZeroIsRefused) {
    EXPECT_EQ(ProblemOf(std::wstring(L"{}\0", 3)), L"line 1, column 3: not JSON: a character U+0000");
    EXPECT_NE(ProblemOf(std::wstring(L"{\"jobId\":\"a\0b\"}", 15)), L"");
    EXPECT_NE(ProblemOf(std::wstring(L"\0{}", 3)), L"");
}

TEST(JsonTextTest, EscapesOfLoneSurrogatesAreRead) {
    const auto units = [](std::initializer_list<unsigned> numbers) {
        std::wstring text;
        for (const unsigned number : numbers) {
            text += static_cast<wchar_t>(number);
        }
        return text;
    };
    EXPECT_EQ(JobIdOf(LR"({"jobId":"\ud800"})"), units({0xD800}));
    EXPECT_EQ(JobIdOf(LR"({"jobId":"\uDFFF"})"), units({0xDFFF}));
    EXPECT_EQ(JobIdOf(LR"({"jobId":"\uDe00\uD83d"})"), units({0xDE00, 0xD83D}));
    EXPECT_EQ(JobIdOf(LR"({"jobId":"\ud83d\ud83d\ude00"})"), units({0xD83D}) + L"\U0001F600");
    EXPECT_EQ(JobIdOf(LR"({"jobId":"\ud83dx\ude00"})"), units({0xD83D, 'x', 0xDE00}));
    EXPECT_EQ(JobIdOf(LR"({"jobId":"\ud83d\\ude00"})"), units({0xD83D}) + L"\\ude00");
    EXPECT_EQ(JobIdOf(LR"({"jobId":"\\ud83d\\\ud83d\\\\ud83d"})"), L"\\ud83d\\" + units({0xD83D}) + L"\\\\ud83d");
    EXPECT_EQ(JobIdOf(LR"({"jobId":"\ud83d\ude00"})"), L"\U0001F600");
}

TEST(JsonTextTest, LoneSurrogatesThatAreNotEscapedAreRefused) {
    EXPECT_EQ(ProblemOf(std::wstring(L"{\"") + wchar_t{0xD800} + L"\":0}"),
              L"not JSON: element 3 of the text is not a character");
    EXPECT_NE(ProblemOf(std::wstring(L"{\"") + wchar_t{0xDC80} + L"\":0}"), L"");
}

TEST(JsonTextTest, TextsAsCodePointsAreRead) {
    EXPECT_EQ(JobIdOf(LR"({"jobId":{"codePoints":[72,105,0]}})"), std::wstring(L"Hi\0", 3));
    EXPECT_EQ(JobIdOf(LR"({"jobId":{"note":[1],"codePoints":[128512]}})"), L"\U0001F600");
    EXPECT_EQ(JobIdOf(LR"({"jobId":{"codePoints":[55357,56832]}})").size(), 2U);
}

TEST(JsonTextTest, MoreThan64LevelsAreRefused) {
    EXPECT_EQ(ProblemOf(Nested(63)), L"");
    EXPECT_EQ(ProblemOf(Nested(64)), L"line 1, column 75: nested deeper than 64 levels");
    EXPECT_EQ(ProblemOf(std::wstring(1'000'000, L'[')), L"line 1, column 1: expected an object, found a list");
    EXPECT_EQ(ProblemOf(Nested(1'000'000)), L"line 1, column 75: nested deeper than 64 levels");
}

TEST(JsonTextTest, LongNamesAndNumbersAreQuotedShort) {
    const std::wstring digits(200, L'9');
    EXPECT_EQ(ProblemOf(L"{\"version\":" + digits + L"}"),
              L"line 1, column 12: version: expected version 1, the newest that this program knows, found " +
                  digits.substr(0, 60) + L"...");
}

TEST(JsonTextTest, EveryBeginningOfATextIsRefused) {
    const std::wstring json =
        LR"({"version":1,"jobId":"a\u00e9\ud800","inputFiles":["\\",{"codePoints":[65]}],"x":[1.5]})";
    ASSERT_EQ(ProblemOf(json), L"");
    for (std::size_t length = 0; length < json.size(); ++length) {
        EXPECT_NE(ProblemOf(json.substr(0, length)), L"") << length;
    }
}
