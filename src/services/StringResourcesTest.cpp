#include <optional>

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"

namespace {

/// The text of the member; nothing if there is none.
std::optional<std::wstring> Member(const std::wstring& json, const std::wstring& name) {
    std::wstring member = L"old";
    if (!ControllerCSWrapper::GetStringResources(json, name, member)) {
        EXPECT_EQ(member, L"old");
        return std::nullopt;
    }
    return member;
}

} // namespace

TEST(StringResourcesTest, APlainStringIsGivenAsItsText) {
    EXPECT_EQ(Member(LR"({"a":"x","b":"say \"\u00e9\"\n"})", L"b"), L"say \"\u00e9\"\n");
    EXPECT_EQ(Member(LR"({"a":""})", L"a"), L"");
    EXPECT_EQ(Member(LR"({"a":"\ud800"})", L"a"), std::wstring{wchar_t{0xD800}});
}

TEST(StringResourcesTest, AnythingElseIsGivenAsItsJson) {
    const std::wstring json = L"\ufeff { \"object\" : { \"k\" : [ \"\\ud800\u00e9\", 1.50 ] }  , \"list\" : [ 1 , 2 ] "
                              L",\"number\" : -1.0e5 ,\"true\" : true , \"false\":false,\"null\" : null\n}";
    EXPECT_EQ(Member(json, L"object"), L"{ \"k\" : [ \"\\ud800\u00e9\", 1.50 ] }");
    EXPECT_EQ(Member(json, L"list"), L"[ 1 , 2 ]");
    EXPECT_EQ(Member(json, L"number"), L"-1.0e5");
    EXPECT_EQ(Member(json, L"true"), L"true");
    EXPECT_EQ(Member(json, L"false"), L"false");
    EXPECT_EQ(Member(json, L"null"), L"null");
}

TEST(StringResourcesTest, AnObjectOfObjectsIsTakenApartStepByStep) {
    const auto culture = Member(LR"({"en-US":{"title":"Jobs"},"de-DE":{"title":"Auftr\u00e4ge"}})", L"de-DE");
    ASSERT_TRUE(culture);
    EXPECT_EQ(Member(*culture, L"title"), L"Auftr\u00e4ge");
}

TEST(StringResourcesTest, OnlyMembersOfTheOutermostObjectCount) {
    EXPECT_EQ(Member(LR"({"a":{"b":"inner"},"c":["b",{"b":1}]})", L"b"), std::nullopt);
    EXPECT_EQ(Member(LR"([{"b":1}])", L"b"), std::nullopt);
    EXPECT_EQ(Member(LR"({"a":{"b":"inner"},"b":"outer"})", L"b"), L"outer");
    EXPECT_EQ(Member(LR"({"b":{"b":"inner"}})", L"b"), LR"({"b":"inner"})");
}

TEST(StringResourcesTest, NamesAreComparedAsText) {
    EXPECT_EQ(Member(LR"({"\u0061":"x"})", L"a"), L"x");
    EXPECT_EQ(Member(LR"({"":"x"})", L""), L"x");
    EXPECT_EQ(Member(LR"({"A":"x"})", L"a"), std::nullopt);
    EXPECT_EQ(Member(LR"({"a\u0000b":"x"})", std::wstring(L"a\0b", 3)), L"x");
}

TEST(StringResourcesTest, ATextThatIsNotJsonHasNoMembers) {
    for (const std::wstring& json : {std::wstring(), std::wstring(L"{\"a\":\"x\""), std::wstring(L"{\"a\":\"x\"} x"),
                                     std::wstring(L"\"a\""), std::wstring(L"{\"a\":\"x\"}\0", 10),
                                     std::wstring(L"{\"a\":1,\"a\":2}"), L"{\"a\":" + std::wstring(1'000'000, L'[')}) {
        EXPECT_EQ(Member(json, L"a"), std::nullopt) << json.substr(0, 20);
    }
}
