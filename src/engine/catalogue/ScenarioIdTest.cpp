#include "engine/catalogue/ScenarioId.h"

#include <gtest/gtest.h>

namespace {

// The expected numbers were computed independently, over the UTF-16 bytes of each text.

TEST(ScenarioIdTest, EmptyTextGivesTheOffsetBasis) {
    EXPECT_EQ(HashOf(L""), 0xcbf29ce484222325U);
    EXPECT_EQ(ScenarioId(L""), L"14695981039346656037");
}

TEST(ScenarioIdTest, EachUnitIsTwoBytesLowByteFirst) {
    EXPECT_EQ(HashOf(L"a"), 620337896427418084U);
    EXPECT_EQ(HashOf(L"\u4e2d\u6587"), 4981773450566581006U);
}

TEST(ScenarioIdTest, UnitsBelowAndAbove256AreHashedAlike) {
    EXPECT_EQ(HashOf(L"\u00ff"), 763824163880569834U);
    EXPECT_EQ(HashOf(L"\u0100"), 590682968308805178U);
    EXPECT_EQ(HashOf(L"a\u00ff\u0100z"), 3414686525641538610U);
}

TEST(ScenarioIdTest, IdentifierIsTheHashInDecimal) {
    EXPECT_EQ(ScenarioId(L"C:\\scenarios\\mesh.rb"), L"16627485072161660388");
    EXPECT_EQ(ScenarioId(L"L : C:\\scenarios\\mesh.rb"), L"13449174645078562290");
}

TEST(ScenarioIdTest, CharactersBeyond16BitsAreHashedAsTwoUnits) {
    EXPECT_EQ(ScenarioId(L"\U0001F600"), L"17553360157299443082");
}

TEST(ScenarioIdTest, UnpairedSurrogatesAreHashedAsTheyAre) {
    EXPECT_EQ(ScenarioId(std::wstring(1, static_cast<wchar_t>(0xd800))), L"590446573308739813");
}

TEST(ScenarioIdTest, ValueThatIsNoCharacterIsHashedAsTheReplacement) {
    if (sizeof(wchar_t) == sizeof(char16_t)) {
        GTEST_SKIP() << "Elements of this system's texts are UTF-16.";
    }
    EXPECT_EQ(HashOf(std::wstring(1, static_cast<wchar_t>(0x110000))), HashOf(L"\uFFFD"));
}

} // namespace
