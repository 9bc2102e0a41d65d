#include "engine/catalogue/ScenarioSettings.h"

#include "kit/TemporaryDirectory.h"
#include "kit/doubles/RecordingCompanion.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::wstring>;

class ScenarioSettingsTest : public testing::Test {
protected:
    std::vector<InputFileSpec> Read(const std::string& content) {
        WriteTextFile(directory / L"x.adc", content);
        return ReadScenarioInputs(directory / L"x.adc");
    }

    TemporaryDirectory directory;
    RecordingCompanion companion;
};

TEST_F(ScenarioSettingsTest, ListsAreSplitAtEveryComma) {
    EXPECT_EQ(SplitAtCommas(L"igs,stp"), (Texts{L"igs", L"stp"}));
    EXPECT_EQ(SplitAtCommas(L"igs"), Texts{L"igs"});
    EXPECT_EQ(SplitAtCommas(L" igs , stp "), (Texts{L" igs ", L" stp "}));
}

TEST_F(ScenarioSettingsTest, EmptyListHasNoPiece) {
    EXPECT_EQ(SplitAtCommas(L""), Texts());
}

TEST_F(ScenarioSettingsTest, CommaAtTheEndAddsNoEmptyPiece) {
    EXPECT_EQ(SplitAtCommas(L"igs,"), Texts{L"igs"});
    EXPECT_EQ(SplitAtCommas(L"igs,,"), (Texts{L"igs", L""}));
}

TEST_F(ScenarioSettingsTest, LeadingOrDoubledCommaGivesAnEmptyPiece) {
    EXPECT_EQ(SplitAtCommas(L",igs"), (Texts{L"", L"igs"}));
    EXPECT_EQ(SplitAtCommas(L"igs,,stp"), (Texts{L"igs", L"", L"stp"}));
    EXPECT_EQ(SplitAtCommas(L","), Texts{L""});
}

TEST_F(ScenarioSettingsTest, TwoSecondaryInputsMakeThreeInputs) {
    const std::vector<InputFileSpec> expected{{L"Neutral", {L"igs", L"stp"}}, {}, {}};
    EXPECT_EQ(Read("[Scenario]\nCADName=Neutral\nCADExt=igs,stp\nSecondInput=2\n"), expected);
}

TEST_F(ScenarioSettingsTest, NegativeOrUnreadableCountMakesOneInput) {
    for (const char* count : {"-3", "many", "", "0"}) {
        const std::string text = std::string("[Scenario]\nCADName=Neutral\nSecondInput=") + count + "\n";
        EXPECT_EQ(Read(text), (std::vector<InputFileSpec>{{L"Neutral", {}}})) << count;
    }
}

TEST_F(ScenarioSettingsTest, EmptySettingsMakeOneUnnamedInput) {
    EXPECT_EQ(Read(""), std::vector<InputFileSpec>(1));
    EXPECT_EQ(Read("[Other]\nCADName=Neutral\n"), std::vector<InputFileSpec>(1));
}

TEST_F(ScenarioSettingsTest, CountsUpToTheLimitAreTakenSilently) {
    EXPECT_EQ(Read("[Scenario]\nSecondInput=10000\n").size(), 10'001U);
    EXPECT_EQ(companion.Events(), Texts());
}

TEST_F(ScenarioSettingsTest, CountsBeyondTheLimitAreCutWithAWarningThatNamesTheFile) {
    const std::wstring file = platform::ToNativeText(directory / L"x.adc");
    for (const std::wstring count : {L"10001", L"2147483647"}) {
        companion.Forget();
        EXPECT_EQ(Read("[Scenario]\nSecondInput=" + text::ToUtf8(count) + "\n").size(), 10'001U);
        EXPECT_EQ(companion.Events(), Texts{L"warn: " + file + L": SecondInput: expected at most 10000, found " +
                                            count + L"; the scenario is listed with 10000 secondary inputs"});
    }
}

} // namespace
