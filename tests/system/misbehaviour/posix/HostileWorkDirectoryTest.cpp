#include "kit/processes/ScenarioRunFixture.h"
#include "kit/processes/ScenarioTraces.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

/// A scenario's damage to its work directory stays there: a directory outside is unchanged.
class HostileWorkDirectoryTest : public ScenarioRunFixture {
protected:
    HostileWorkDirectoryTest() {
        job.workDir = directory / L"work\\3f9a0c1";
        WriteTextFile(directory / L"outside\\precious", "content");
        WriteTextFile(directory / L"outside\\scenario.log", "content");
    }

    std::string Outside() const { return text::ToUtf8(platform::ToNativeText(directory / L"outside")); }

    void ExpectOutsideUntouched() const {
        std::vector<platform::DirectoryEntry> entries;
        EXPECT_TRUE(platform::ListDirectory(directory / L"outside", entries));
        EXPECT_EQ(entries.size(), 2U);
        EXPECT_EQ(ReadTextFile(directory / L"outside\\precious"), "content");
        EXPECT_EQ(ReadTextFile(directory / L"outside\\scenario.log"), "content");
    }

    bool RemoveWorkDirectory() {
        WriteSettings();
        return ControllerCSWrapper::RemoveJobWorkDirectory(job.workDir);
    }
};

} // namespace

TEST_F(HostileWorkDirectoryTest, AScenarioThatDeletesItsWorkDirectoryFails) {
    UseSteps("delete work folder\nprint on\nexit 3");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 4);
    EXPECT_FALSE(platform::Exists(job.workDir));
}

TEST_F(HostileWorkDirectoryTest, AScenarioThatDeletedItsWorkDirectoryCanBeCancelled) {
    settings.graceSeconds = 0;
    UseSteps("ignore requests\ndelete work folder\nmake folder " + Outside() + "/../gone\nwait");
    ASSERT_EQ(Start(), 0);
    AwaitFile(directory.Path(), L"gone");
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitEnd(), 4);
    EXPECT_FALSE(platform::Exists(job.workDir));
}

TEST_F(HostileWorkDirectoryTest, NothingIsWrittenThroughALinkInThePlaceOfTheWorkDirectory) {
    settings.logLimitBytes = 4096;
    UseSteps("replace work folder " + Outside() + "\nprint lines 1000\nexit 3");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 4);
    ExpectOutsideUntouched();
    EXPECT_FALSE(RemoveWorkDirectory());
    ExpectOutsideUntouched();
}

TEST_F(HostileWorkDirectoryTest, NoRequestToStopIsMadeThroughALinkInThePlaceOfTheWorkDirectory) {
    settings.graceSeconds = 0;
    UseSteps("ignore requests\nreplace work folder " + Outside() + "\nmake folder " + Outside() + "/../gone\nwait");
    ASSERT_EQ(Start(), 0);
    AwaitFile(directory.Path(), L"gone");
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitEnd(), 4);
    ExpectOutsideUntouched();
}

TEST_F(HostileWorkDirectoryTest, NothingIsWrittenThroughALinkInThePlaceOfTheDirectoryAbove) {
    ASSERT_TRUE(platform::EnsureDirectory(directory / L"outside work\\3f9a0c1"));
    settings.logLimitBytes = 4096;
    UseSteps("replace parent folder " + text::ToUtf8(platform::ToNativeText(directory / L"outside work")) +
             "\nprint lines 1000\nexit 3");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_TRUE(platform::Exists(directory / L"work.moved\\3f9a0c1\\run_scenario_result.json"));
    std::vector<platform::DirectoryEntry> entries;
    ASSERT_TRUE(platform::ListDirectory(directory / L"outside work\\3f9a0c1", entries));
    EXPECT_TRUE(entries.empty());
}

TEST_F(HostileWorkDirectoryTest, LinksInThePlaceOfTheLogAreNotWrittenThrough) {
    settings.logLimitBytes = 4096;
    for (const std::string kind : {"link", "hard link"}) {
        Run("make " + kind + " scenario.log " + Outside() + "/precious\nprint lines 1000\nexit 0");
        ExpectOutsideUntouched();
    }
}

TEST_F(HostileWorkDirectoryTest, LinksInThePlaceOfTheRequestToStopAreRequestsAndNotWrittenThrough) {
    settings.graceSeconds = 0;
    for (const std::string kind : {"link", "hard link"}) {
        UseSteps("make " + kind + " killprocess " + Outside() + "/precious\nwait");
        ASSERT_EQ(Start(), 0);
        EXPECT_EQ(AwaitEnd(), 0);
        EXPECT_NE(Call("CancelScenario", job.jobId), 0);
        RequestStop();
        ExpectOutsideUntouched();
    }
    UseSteps("make link killprocess " + Outside() + "/missing\nwait");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    ExpectOutsideUntouched();
}

TEST_F(HostileWorkDirectoryTest, LinksInThePlaceOfTheResultAreReplacedThemselves) {
    for (const std::string kind : {"link", "hard link"}) {
        Run("make " + kind + " run_scenario_result.json " + Outside() + "/precious\nexit 3");
        EXPECT_EQ(FirstMessage(), L"The scenario ended with exit code 3 and wrote a result that cannot be read.");
        ExpectOutsideUntouched();
    }
}

TEST_F(HostileWorkDirectoryTest, ANamedPipeInThePlaceOfTheResultIsReplaced) {
    Run("make named pipe run_scenario_result.json\nexit 0");
    EXPECT_FALSE(Result().succeeded);
}

TEST_F(HostileWorkDirectoryTest, AnyTreeIsRemoved) {
    Run("dig 1000\nexit 0");
    EXPECT_TRUE(RemoveWorkDirectory());
    EXPECT_FALSE(platform::Exists(job.workDir));
}

TEST_F(HostileWorkDirectoryTest, ADirectoryInThePlaceOfTheResultLeavesNone) {
    UseSteps("make folder run_scenario_result.json\nexit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 4);
    EXPECT_TRUE(RemoveWorkDirectory());
}
