#include "CommonControllerLib/StringManager.h"

#include "kit/doubles/RecordingCompanion.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// A file with the sections "en-US" (the default culture) and "de-DE" (the selected one), each with menu/open.
class StringManagerTest : public testing::Test {
protected:
    StringManagerTest() {
        companion.culture = L"de-DE";
        companion.defaultCulture = L"en-US";
        companion.messages.jsonFiles[L"C:\\strings.json"] = L"{file}";
        AddMember(L"{file}", L"en-US", L"{english}");
        AddMember(L"{file}", L"de-DE", L"{german}");
        AddMember(L"{file}", L"fr-FR", L"{french}");
        AddMember(L"{english}", L"menu", L"{english menu}");
        AddMember(L"{german}", L"menu", L"{german menu}");
        AddMember(L"{english menu}", L"open", L"Open");
        AddMember(L"{english menu}", L"close", L"Close");
        AddMember(L"{german menu}", L"open", L"Öffnen");
    }

    void AddMember(const std::wstring& json, const std::wstring& name, const std::wstring& member) {
        companion.messages.stringResources[{json, name}] = member;
    }

    std::wstring Find(const std::wstring& key, const std::wstring& culture = L"") {
        std::wstring text = L"untouched";
        const bool isFound = StringManager(L"C:\\strings.json").GetLocalizedString(key, text, culture);
        return isFound ? L"found " + text : L"missing, " + text;
    }

    RecordingCompanion companion;
};

TEST_F(StringManagerTest, AKeyNamesATextByTheMembersOnTheWayDown) {
    EXPECT_EQ(Find(L"menu/open"), L"found Öffnen");
}

TEST_F(StringManagerTest, TheCultureAskedForIsTriedFirst) {
    EXPECT_EQ(Find(L"menu/open", L"en-US"), L"found Open");
}

TEST_F(StringManagerTest, WithoutACultureTheSelectedOneIsTriedFirst) {
    EXPECT_EQ(Find(L"menu/open", L""), L"found Öffnen");
}

TEST_F(StringManagerTest, AKeyMissingInTheCultureAskedForIsFoundInTheSelectedOne) {
    EXPECT_EQ(Find(L"menu/open", L"fr-FR"), L"found Öffnen");
}

TEST_F(StringManagerTest, AKeyMissingInTheSelectedCultureIsFoundInTheDefaultOne) {
    EXPECT_EQ(Find(L"menu/close"), L"found Close");
}

TEST_F(StringManagerTest, AMiddleSegmentOfANumberSignIsPassedOver) {
    EXPECT_EQ(Find(L"menu/#/open"), L"found Öffnen");
    EXPECT_EQ(Find(L"#/menu/open/#"), L"found Öffnen");
}

TEST_F(StringManagerTest, AKeyOfAnObjectGivesItsJsonText) {
    EXPECT_EQ(Find(L"menu"), L"found {german menu}");
}

TEST_F(StringManagerTest, AnEmptyKeyGivesTheSection) {
    EXPECT_EQ(Find(L""), L"found {german}");
}

TEST_F(StringManagerTest, AnEmptySegmentIsAMemberWithoutAName) {
    EXPECT_EQ(Find(L"menu//open"), L"missing, untouched");
    EXPECT_EQ(Find(L"menu/open/"), L"missing, untouched");
    AddMember(L"{german menu}", L"", L"{nameless}");
    AddMember(L"{nameless}", L"open", L"deeper");
    EXPECT_EQ(Find(L"menu//open"), L"found deeper");
}

TEST_F(StringManagerTest, AKeyThatNoCultureHasIsMissingAndTheTextStays) {
    EXPECT_EQ(Find(L"menu/print"), L"missing, untouched");
}

TEST_F(StringManagerTest, ASectionThatIsRefusedOnceIsAskedForOnceMore) {
    companion.messages.stringResourceRefusals = 1;
    EXPECT_EQ(Find(L"menu/open"), L"found Öffnen");
}

TEST_F(StringManagerTest, ASectionThatIsRefusedTwiceIsGivenUp) {
    companion.messages.stringResourceRefusals = 2;
    EXPECT_EQ(Find(L"menu/open"), L"found Open");
}

TEST_F(StringManagerTest, EachCultureIsAskedForTwiceAndAMemberOnce) {
    companion.culture = L"xx-XX";
    EXPECT_EQ(Find(L"menu/print", L"yy-YY"), L"missing, untouched");
    EXPECT_EQ(companion.Events(L"string resource: "),
              (std::vector<std::wstring>{L"yy-YY", L"yy-YY", L"xx-XX", L"xx-XX", L"en-US", L"menu", L"print"}));
}

TEST_F(StringManagerTest, OfAnUnreadableFileNoKeyIsFound) {
    std::wstring text = L"untouched";
    EXPECT_FALSE(StringManager(L"C:\\missing.json").GetLocalizedString(L"menu/open", text, L"en-US"));
    EXPECT_EQ(text, L"untouched");
}

TEST_F(StringManagerTest, GivesTheSelectedCulture) {
    EXPECT_EQ(StringManager(L"C:\\strings.json").GetCultureInfo(), L"de-DE");
}

TEST_F(StringManagerTest, TheFileIsReadOnceAndCopiesAndMovesKeepItsText) {
    const StringManager original(L"C:\\strings.json");
    companion.messages.jsonFiles.clear();
    StringManager copy(original);
    StringManager moved(std::move(copy));
    StringManager assigned(L"C:\\missing.json");
    assigned = std::move(moved);
    std::wstring text;
    EXPECT_TRUE(assigned.GetLocalizedString(L"menu/open", text, L""));
    EXPECT_EQ(text, L"Öffnen");
    EXPECT_TRUE(original.GetLocalizedString(L"menu/close", text, L""));
    EXPECT_EQ(text, L"Close");
}

} // namespace
