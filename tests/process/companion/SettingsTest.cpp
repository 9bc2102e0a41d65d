#include "services/Settings.h"

#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/SystemHelpers.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

namespace {

/// The settings of each test write their log into the test's directory, unless the test names another file.
class SettingsTest : public testing::Test {
protected:
    SettingsTest() {
        Write(R"({"culture":"en-US"})");
        settings::UseFile(path);
    }
    ~SettingsTest() override { settings::UseFile(L""); }

    /// Writes settings with these members (`{"culture":"en-US"}`), and adds the log file if they name none.
    void Write(const std::string& members) {
        const bool namesLog = members.find("logFile") != std::string::npos;
        WriteTextFile(path, namesLog ? members : "{\"logFile\":\"controller.log\"," + members.substr(1));
    }

    std::string Log() const { return ReadTextFile(directory / L"controller.log"); }

    static int CountOf(const std::string& part, const std::string& text) {
        int count = 0;
        for (std::size_t place = text.find(part); place != std::string::npos; place = text.find(part, place + 1)) {
            ++count;
        }
        return count;
    }

    const TemporaryDirectory directory;
    const std::wstring path = directory / L"settings.json";
};

} // namespace

TEST_F(SettingsTest, AnswersWhatTheFileSays) {
    Write(R"({"workDirectory":"work","jobListFile":"list.json","culture":"de-DE","defaultCulture":"fr-FR",
        "scenarioDirectories":[{"path":"s","label":"L"}],"autoDeleteWorkFolder":{"enabled":true,"days":9}})");
    EXPECT_EQ(ControllerCSWrapper::GetWorkDirectory(), directory / L"work");
    EXPECT_EQ(ControllerCSWrapper::GetJobListFile(), directory / L"list.json");
    EXPECT_EQ(ControllerCSWrapper::GetCultureInfo(), L"de-DE");
    EXPECT_EQ(ControllerCSWrapper::GetDefaultCultureInfo(), L"fr-FR");
    EXPECT_EQ(ControllerCSWrapper::GetScenarioDirectoryList(),
              (std::vector<ScenarioDirectory>{{directory / L"s", L"L"}}));
    int days = 0;
    EXPECT_TRUE(ControllerCSWrapper::IsAutoDeleteWorkFolder(days));
    EXPECT_EQ(days, 9);
}

TEST_F(SettingsTest, LeavesDaysAloneWithoutAutomaticDeletion) {
    int days = -5;
    EXPECT_FALSE(ControllerCSWrapper::IsAutoDeleteWorkFolder(days));
    EXPECT_EQ(days, -5);
}

TEST_F(SettingsTest, KeepsOneSnapshotWhileTheFileStays) {
    EXPECT_EQ(settings::Current(), settings::Current());
}

TEST_F(SettingsTest, ReadsAChangedFileAnew) {
    const auto before = settings::Current();
    Write(R"({"culture":"de-DE"})");
    EXPECT_EQ(settings::Current()->culture, L"de-DE");
    EXPECT_EQ(before->culture, L"en-US");
}

TEST_F(SettingsTest, KeepsTheLastGoodSettingsWhenTheFileBreaks) {
    Write(R"({"culture":"de-DE"})");
    ASSERT_EQ(settings::Problem(), L"");
    Write(R"({"culture":7})");
    EXPECT_EQ(settings::Current()->culture, L"de-DE");
    EXPECT_NE(settings::Problem().find(L"culture: expected the name of a culture"), std::wstring::npos);
    Write(R"({"culture":"fr-FR"})");
    EXPECT_EQ(settings::Current()->culture, L"fr-FR");
    EXPECT_EQ(settings::Problem(), L"");
}

TEST_F(SettingsTest, KeepsTheLastGoodSettingsWhenTheFileGoes) {
    Write(R"({"culture":"de-DE"})");
    ASSERT_EQ(settings::Current()->culture, L"de-DE");
    ASSERT_TRUE(platform::RemoveFile(path));
    EXPECT_EQ(settings::Current()->culture, L"de-DE");
    EXPECT_NE(settings::Problem(), L"");
}

TEST_F(SettingsTest, UsesTheBuiltInSettingsWhenTheFirstFileIsBroken) {
    WriteTextFile(path, "{");
    EXPECT_EQ(settings::Current()->file, L"");
    EXPECT_NE(settings::Problem(), L"");
}

TEST_F(SettingsTest, TellsThatANamedFileIsMissing) {
    settings::UseFile(directory / L"none.json");
    EXPECT_NE(settings::Problem().find(L"none.json"), std::wstring::npos);
}

TEST_F(SettingsTest, TakesTheFileThatTheEnvironmentNames) {
    Write(R"({"culture":"it-IT"})");
    platform::SetEnvironment(L"CONTROLLER_SETTINGS_FILE", platform::ToNativeText(path));
    settings::UseFile(L"");
    EXPECT_EQ(settings::Current()->culture, L"it-IT");
    EXPECT_EQ(settings::Current()->file, path);
    platform::SetEnvironment(L"CONTROLLER_SETTINGS_FILE", L"");
}

TEST_F(SettingsTest, PrefersTheFileThatTheHostNames) {
    Write(R"({"culture":"it-IT"})");
    platform::SetEnvironment(L"CONTROLLER_SETTINGS_FILE", platform::ToNativeText(directory / L"other.json"));
    settings::UseFile(path);
    EXPECT_EQ(settings::Current()->culture, L"it-IT");
    platform::SetEnvironment(L"CONTROLLER_SETTINGS_FILE", L"");
}

TEST_F(SettingsTest, LogsABrokenFileOnceForEachOfItsStates) {
    Write(R"({"culture":"en-US"})");
    settings::Current();
    Write(R"({"culture":1})");
    settings::Current();
    settings::Current();
    EXPECT_EQ(CountOf("The settings are not usable", Log()), 1);
    Write(R"({"culture":22})");
    settings::Current();
    EXPECT_EQ(CountOf("The settings are not usable", Log()), 2);
}

TEST_F(SettingsTest, WhatIsNoFileIsToldOnceAndLeftAsSoonAsItIsOne) {
    Write(R"({"culture":"de-DE"})");
    ASSERT_EQ(settings::Current()->culture, L"de-DE");
    ASSERT_TRUE(platform::RemoveFile(path));
    WriteTextFile(path + L"\\inside.txt", ""); // a directory cannot be opened as a file
    EXPECT_EQ(settings::Current()->culture, L"de-DE");
    EXPECT_EQ(settings::Current()->culture, L"de-DE");
    EXPECT_EQ(CountOf("The settings are not usable", Log()), 1);
    ASSERT_TRUE(platform::RemoveTree(path));
    Write(R"({"culture":"fr-FR"})");
    EXPECT_EQ(settings::Current()->culture, L"fr-FR");
}

TEST_F(SettingsTest, WhatARunHoldsStaysAndTheRestChanges) {
    const auto atStart = settings::FrozenForProcess();
    WriteTextFile(path, R"({"logFile":"other.log","jobListFile":"other.json","functionModules":["other.so"],
        "eventTransmitter":"other_line.so","transmitterName":"other","workDirectory":"other_work"})");
    const auto now = settings::Current();
    EXPECT_EQ(now->jobListFile, atStart->jobListFile);
    EXPECT_EQ(now->logFile, atStart->logFile);
    EXPECT_EQ(now->functionModules, atStart->functionModules);
    EXPECT_EQ(now->eventTransmitter, atStart->eventTransmitter);
    EXPECT_EQ(now->transmitterName, atStart->transmitterName);
    EXPECT_EQ(now->workDirectory, directory / L"other_work");
    settings::Current();
    EXPECT_EQ(CountOf("a change takes effect with the next start", Log()), 5) << Log();
}

TEST_F(SettingsTest, NothingIsHeldWithAnotherFile) {
    settings::FrozenForProcess();
    WriteTextFile(directory / L"other.json", R"({"jobListFile":"other_list.json"})");
    settings::UseFile(directory / L"other.json");
    EXPECT_EQ(settings::Current()->jobListFile, directory / L"other_list.json");
}

TEST_F(SettingsTest, SerializedSettingsAreReadAsTheyWere) {
    Write(
        R"({"logLevel":"error","interpreters":{".rb":["ruby","-w"],".py":["C:\\p \u00e9\\python.exe"]},"cancelGraceSeconds":7,
        "scenarioLogLimitBytes":5000,"scenarioApiDirectory":"api","scenarioRunner":"bin/runner","workDirectory":"w",
        "jobListFile":"l.json","culture":"de-DE","defaultCulture":"fr","functionModules":["m"],"libraryDirectories":["x","y"],
        "eventTransmitter":"t","transmitterName":"name","stringResourceFile":"s.json","parallelJobs":3,
        "resources":{"cad":2,"memory":64},"ageingMinutes":5,"afterRestart":"queued","provenance":false,"reuse":true,
        "toolVersions":{"mesher":"2.1"},"autoDeleteWorkFolder":{"enabled":true,"days":9},
        "scenarioDirectories":[{"path":"a","label":"A"},{"path":"b"}],
        "web":{"port":8080,"readOnly":true,"publicAddress":"https://a.example/","inputDirectories":["in"]},
        "hooks":{"jobEnded":["e"],"jobFailed":["f","1"],"queueEmpty":["q"]},
        "jobDefaults":{"retries":2,"retryDelay":"30s","retryBackoff":true,"timeLimit":"2h","memoryLimitMiB":100},
        "slurm":{"partition":"p","account":"a","cpus":2,"memoryMegabytes":3,"minutes":4,"options":["--qos=q"],
        "lostAfterSeconds":5}})");
    const auto original = settings::Current();
    ASSERT_EQ(settings::Problem(), L"");
    WriteTextFile(directory / L"elsewhere\\copy.json", text::ToUtf8(settings::Serialize(*original)));
    settings::UseFile(directory / L"elsewhere\\copy.json");
    ASSERT_EQ(settings::Problem(), L"");
    settings::Settings copy = *settings::Current();
    EXPECT_EQ(copy.file, directory / L"elsewhere\\copy.json");
    copy.file = original->file;
    EXPECT_EQ(copy, *original);
}

TEST_F(SettingsTest, EachMemberIsSerialized) {
    Write(R"({"jobDefaults":{"retries":1,"retryDelay":1,"retryBackoff":true,"retryOnlyAfterCrash":true,"timeLimit":1,
        "silenceLimit":1,"memoryLimitMiB":1,"cpuLimitPercent":1},"slurm":{"partition":"p","account":"a","cpus":2,
        "memoryMegabytes":3,"minutes":4,"options":["--qos=q"]},"scenarioDirectories":[{"path":"a"}]})");
    ASSERT_EQ(settings::Problem(), L"");
    const std::wstring json = settings::Serialize(*settings::Current());
    for (const std::wstring& name : settings::MemberNames()) {
        EXPECT_NE(json.find(L'"' + name.substr(name.rfind(L'.') + 1) + L"\":"), std::wstring::npos)
            << text::ToUtf8(name);
    }
}

TEST_F(SettingsTest, LogsUnknownMembersAsWarnings) {
    Write(R"({"cultur":"de-DE"})");
    settings::Current();
    EXPECT_NE(Log().find("warning"), std::string::npos);
    EXPECT_NE(Log().find("cultur: there is no such member"), std::string::npos);
}

TEST_F(SettingsTest, LogsThatEverybodyMayChangeTheFileOrAModule) {
    WriteTextFile(directory / L"modules\\mine.so", "");
    WriteTextFile(directory / L"modules\\shared.so", "");
    LetEverybodyWrite(directory / L"modules\\shared.so");
    Write(R"({"functionModules":["modules/mine.so","modules/shared.so"]})");
    settings::Current();
    EXPECT_EQ(CountOf("Everybody may change", Log()), 1);
    EXPECT_EQ(CountOf("shared.so, and so decide what runs in your name", Log()), 1);
    WriteTextFile(directory / L"libraries\\one.so", "");
    LetEverybodyWrite(directory / L"libraries");
    Write(R"({"functionModules":[],"libraryDirectories":["libraries"]})");
    settings::Current();
    EXPECT_EQ(CountOf("libraries, and so decide what runs in your name", Log()), 1);
    Write(R"({"functionModules":[]})");
    LetEverybodyWrite(path);
    settings::Current();
    EXPECT_EQ(CountOf("settings.json, and so decide what runs in your name", Log()), 1);
}

TEST_F(SettingsTest, LevelOfTheLogIsInfoWithoutAWord) {
    ControllerCSWrapper::WriteDebugLog(L"of debugging");
    EXPECT_FALSE(platform::Exists(directory / L"controller.log"));
    ControllerCSWrapper::WriteInfoLog(L"of information");
    EXPECT_EQ(CountOf("of ", Log()), 1);
    EXPECT_EQ(CountOf("of information", Log()), 1);
}

TEST_F(SettingsTest, RecordsBelowTheLevelOfTheLogAreNotWritten) {
    const std::vector<std::string> names = {"debug", "info", "warning", "error"};
    for (std::size_t level = 0; level < names.size(); ++level) {
        Write(R"({"logFile":")" + names[level] + R"(.log","logLevel":")" + names[level] + "\"}");
        settings::UseFile(path);
        ControllerCSWrapper::WriteDebugLog(L"<record>");
        ControllerCSWrapper::WriteInfoLog(L"<record>");
        ControllerCSWrapper::WriteWarnLog(L"<record>");
        ControllerCSWrapper::WriteErrorLog(L"<record>");
        const std::string log = ReadTextFile(directory / (text::FromUtf8(names[level]) + L".log"));
        EXPECT_EQ(CountOf("<record>", log), static_cast<int>(names.size() - level)) << log;
        EXPECT_EQ(CountOf(" " + names[level] + " ", log), 1) << log;
    }
}

TEST_F(SettingsTest, TheLevelHoldsForALogFileThatTheHostNamesToo) {
    ControllerCSWrapper::ChangeLogFilePath(directory / L"given.log");
    ControllerCSWrapper::WriteDebugLog(L"of debugging");
    EXPECT_FALSE(platform::Exists(directory / L"given.log"));
    Write(R"({"logLevel":"debug"})");
    settings::Current();
    ControllerCSWrapper::WriteDebugLog(L"of debugging");
    EXPECT_EQ(CountOf("of debugging", ReadTextFile(directory / L"given.log")), 1);
}

TEST_F(SettingsTest, ARecordBelowTheLevelLooksAtNoFile) {
    ControllerCSWrapper::WriteDebugLog(L"the level is asked for once");
    Write(R"({"culture":7})"); // a read would find it broken and log it
    ControllerCSWrapper::WriteDebugLog(L"dropped");
    EXPECT_FALSE(platform::Exists(directory / L"controller.log"));
    ASSERT_TRUE(platform::RemoveFile(path));
    ControllerCSWrapper::WriteDebugLog(L"dropped");
    EXPECT_FALSE(platform::Exists(directory / L"controller.log"));
}

TEST_F(SettingsTest, ALevelThatIsWrittenWhileTheProgramRunsHoldsWithTheNextLookAtTheSettings) {
    ControllerCSWrapper::WriteDebugLog(L"before");
    Write(R"({"logLevel":"debug"})");
    EXPECT_EQ(settings::Current()->logLevel, log_file::Level::Debug);
    ControllerCSWrapper::WriteDebugLog(L"after");
    EXPECT_EQ(CountOf("before", Log()), 0);
    EXPECT_EQ(CountOf("after", Log()), 1);
}

TEST_F(SettingsTest, ABrokenFileLeavesTheLevelAsItWas) {
    Write(R"({"logLevel":"debug"})");
    settings::Current();
    Write(R"({"logLevel":"none"})");
    settings::Current();
    ControllerCSWrapper::WriteDebugLog(L"still written");
    EXPECT_EQ(CountOf("still written", Log()), 1);
}

TEST_F(SettingsTest, NamesTheLogFileUntilAnotherIsGiven) {
    ControllerCSWrapper::WriteInfoLog(L"by the settings");
    EXPECT_EQ(CountOf("by the settings", Log()), 1);
    ControllerCSWrapper::ChangeLogFilePath(directory / L"given.log");
    ControllerCSWrapper::WriteInfoLog(L"by the host");
    EXPECT_EQ(CountOf("by the host", Log()), 0);
    EXPECT_EQ(CountOf("by the host", ReadTextFile(directory / L"given.log")), 1);
}

TEST_F(SettingsTest, GivesAWholeSnapshotToEveryThreadWhileTheFileChanges) {
    Write(R"({"culture":"aa","defaultCulture":"aa"})");
    std::vector<std::thread> readers;
    for (int reader = 0; reader < 4; ++reader) {
        readers.emplace_back([] {
            for (int look = 0; look < 200; ++look) {
                const auto current = settings::Current();
                EXPECT_EQ(current->culture, current->defaultCulture);
                ControllerCSWrapper::WriteInfoLog(L"looked");
            }
        });
    }
    for (int change = 0; change < 20; ++change) {
        Write(change % 2 == 0 ? R"({"culture":"bb","defaultCulture":"bb"})"
                              : R"({"culture":"a","defaultCulture":"a"})");
    }
    for (std::thread& reader : readers) {
        reader.join();
    }
}
