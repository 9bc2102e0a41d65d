#include "cadjobs/Cadjobs.h"

#include "front_end/output/BuiltInStrings.h"
#include "kit/front_end/CommandContextFixture.h"

namespace {

class SettingsCommandsTest : public CommandContextFixture {
protected:
    int Settings(std::vector<std::wstring> arguments) {
        arguments.insert(arguments.begin(), L"settings");
        console.output.clear();
        return static_cast<int>(front_end::RunCadjobs(context, arguments));
    }
};

TEST_F(SettingsCommandsTest, WhatIsShownIsASettingsFileWithTheSameSettings) {
    UseSettings(R"({"version":1,"logFile":"","parallelJobs":7,"resources":{"cad":2}})");
    const settings::Settings before = *settings::Current();
    EXPECT_EQ(Settings({L"show"}), 0);
    WriteTextFile(directory / L"shown.json", console.output);
    settings::UseFile(directory / L"shown.json");
    settings::Settings after = *settings::Current();
    EXPECT_EQ(settings::Problem(), L"");
    after.file = before.file;
    EXPECT_EQ(after, before);
}

TEST_F(SettingsCommandsTest, TheFileInForceIsNamed) {
    EXPECT_EQ(Settings({L"path"}), 0);
    EXPECT_TRUE(console.output.ends_with("settings.json\n")) << console.output;
}

TEST_F(SettingsCommandsTest, ACheckNamesWrongValuesAndUnknownMembers) {
    EXPECT_EQ(Settings({L"check"}), 0) << console.output;
    UseSettings(R"({"version":1,"logFile":"","paralelJobs":7})");
    EXPECT_EQ(Settings({L"check"}), 1);
    EXPECT_NE(console.output.find("members: "), std::string::npos);
    EXPECT_NE(console.output.find("paralelJobs"), std::string::npos) << console.output;
    UseSettings(R"({"version":1,"parallelJobs":0})");
    EXPECT_EQ(Settings({L"check"}), 1);
    EXPECT_NE(console.output.find("parallelJobs"), std::string::npos) << console.output;
    EXPECT_EQ(Settings({L"show"}), 2);
    EXPECT_EQ(Settings({L"path"}), 0);
}

TEST_F(SettingsCommandsTest, AnyFileCanBeCheckedWithoutUsingIt) {
    WriteTextFile(directory / L"other.json", "{\n\"reuse\":\"yes\"}");
    EXPECT_EQ(Settings({L"check", directory / L"other.json"}), 1);
    EXPECT_NE(console.output.find("other.json, line 2, column 9: reuse: "), std::string::npos) << console.output;
    EXPECT_EQ(Settings({L"check", directory / L"none.json"}), 1);
    EXPECT_EQ(settings::Problem(), L"");
}

TEST_F(SettingsCommandsTest, ALanguageFileIsCheckedForMissingTexts) {
    WriteTextFile(directory / L"strings.fr-FR.json", R"({"fr-FR":{"Table":{"State":"Etat"}}})");
    EXPECT_EQ(Settings({L"language", directory / L"strings.fr-FR.json"}), 1);
    EXPECT_NE(console.output.find("fr-FR: missing: "), std::string::npos);
    EXPECT_NE(console.output.find(", Table/Time"), std::string::npos) << console.output;
    WriteTextFile(directory / L"all.json", front_end::builtInStrings);
    EXPECT_EQ(Settings({L"language", directory / L"all.json"}), 0) << console.output;
}

TEST_F(SettingsCommandsTest, ACheckNamesTheFirstMissingTextsOfTheLanguageInUse) {
    WriteTextFile(directory / L"strings.json", R"({"xx":{"Table":{"State":"S"}}})");
    const std::string settings =
        R"({"version":1,"logFile":"","stringResourceFile":"strings.json","defaultCulture":"en-US","culture":)";
    UseSettings(settings + R"("en-US"})");
    EXPECT_EQ(Settings({L"check"}), 0) << console.output;
    EXPECT_NE(console.output.find("ok     language: en-US\n"), std::string::npos) << console.output;
    WriteTextFile(directory / L"other.json", settings + R"("xx"})");
    EXPECT_EQ(Settings({L"check", directory / L"other.json"}), 1);
    EXPECT_NE(console.output.find("wrong  language: xx: missing: "), std::string::npos) << console.output;
    EXPECT_NE(console.output.find("Completion/Failed, Completion/Last, Confirm/Cancel, ..."), std::string::npos);
    EXPECT_NE(console.output.find("strings.json; \"cadjobs settings language FILE\" names all."), std::string::npos);
}

} // namespace
