#include "front_end/commands/Commands.h"

#include "kit/front_end/CommandContextFixture.h"
#include "platform/files/NativePath.h"

namespace {

class DoctorTest : public CommandContextFixture {
protected:
    DoctorTest() { UseDirectories("work"); }

    void UseDirectories(const std::string& scenarioDirectory) {
        WriteTextFile(directory / L"work\\file", "");
        UseSettings(R"({"version":1,"logFile":"","workDirectory":"work","jobListFile":"job_list.json",)"
                    R"("scenarioRunner":"settings.json","functionModules":[],"interpreters":{},)"
                    R"("scenarioDirectories":[{"path":")" +
                    scenarioDirectory + R"(","label":""}]})");
    }

    int Doctor(bool asJson = false) {
        console.output.clear();
        front_end::Command command{.kind = front_end::CommandKind::Doctor};
        command.asJson = asJson;
        return static_cast<int>(front_end::commands::Doctor(context, command));
    }

    bool Says(const std::string& text) const { return console.output.find(text) != std::string::npos; }
};

TEST_F(DoctorTest, WhatIsFineIsToldToo) {
    (void)Doctor();
    EXPECT_TRUE(Says("ok     versions: cadjobs ")) << console.output;
    EXPECT_TRUE(Says("ok     settings: " + text::ToUtf8(platform::ToNativeText(directory / L"settings.json"))));
    EXPECT_TRUE(Says("ok     directories: " + text::ToUtf8(platform::ToNativeText(directory / L"work")) + "\n"));
    EXPECT_TRUE(Says("ok     scenarios: "));
    EXPECT_TRUE(Says("ok     host: The host is running: process 4711"));
    EXPECT_EQ(host.startCount, 0);
}

TEST_F(DoctorTest, MissingModulesAreWrong) {
    EXPECT_EQ(Doctor(), 1);
    EXPECT_TRUE(Says("wrong  programs: No function module offers \"RunScenario\"")) << console.output;
}

TEST_F(DoctorTest, BrokenSettingsAreWrongAndTheOtherChecksGoOn) {
    UseSettings("{\"version\":");
    EXPECT_EQ(Doctor(), 1);
    EXPECT_TRUE(Says("wrong  settings: The settings cannot be used: ")) << console.output;
    EXPECT_TRUE(Says("  host: "));
}

TEST_F(DoctorTest, TextsThatALanguageLacksOrThatDoNotExistAreWrong) {
    UseSettings(R"({"version":1,"logFile":"","stringResourceFile":"strings.json","culture":"xx"})");
    WriteTextFile(directory / L"strings.xx.json", R"({"xx":{"Table":{"State":"S","Stat":"S"}}})");
    EXPECT_EQ(Doctor(), 1);
    EXPECT_TRUE(Says("wrong  language: xx: missing: ")) << console.output;
    EXPECT_TRUE(Says("wrong  language: xx: there are no such texts: 1: Table/Stat. Mend ")) << console.output;
    EXPECT_TRUE(Says("ok     language: en-US\n"));
    WriteTextFile(directory / L"strings.xx.json", "{broken");
    EXPECT_EQ(Doctor(), 1);
    EXPECT_TRUE(Says("strings.xx.json is no file with the texts of a language: ")) << console.output;
}

TEST_F(DoctorTest, AMissingScenarioDirectoryIsWrong) {
    UseDirectories("missing");
    EXPECT_EQ(Doctor(), 1);
    EXPECT_TRUE(Says("wrong  scenarios: ")) << console.output;
}

TEST_F(DoctorTest, AnotherVersionOfTheHostIsWrong) {
    host.hostVersion = L"controller_host 0.0.1";
    EXPECT_EQ(Doctor(), 1);
    EXPECT_TRUE(Says("wrong  versions: The program of the host is not controller_host " CONTROLLER_VERSION
                     ": controller_host 0.0.1."))
        << console.output;
}

TEST_F(DoctorTest, AHostThatCannotBeReachedIsWrong) {
    host.runningHost = L"process 4711, at /run/x";
    EXPECT_EQ(Doctor(), 1);
    EXPECT_TRUE(Says("wrong  host: A host runs, but cannot be reached from here: process 4711, at /run/x."))
        << console.output;
}

TEST_F(DoctorTest, JsonNamesEachCheck) {
    EXPECT_EQ(Doctor(true), 1);
    EXPECT_TRUE(Says(R"({"version":1,"checks":[{"name":"versions","fine":true,"message":)")) << console.output;
    EXPECT_TRUE(Says(R"({"name":"programs","fine":false,"message":)"));
}

} // namespace
