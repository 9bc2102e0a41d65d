#include "ScenarioRunFixture.h"
#include "ScenarioTraces.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

/// What a scenario does to its work directory must stay there: a folder outside is as it was afterwards.
class HostileWorkFolderTest : public ScenarioRunFixture {
protected:
    HostileWorkFolderTest() {
        job.workDir = folder / L"work\\3f9a0c1";
        WriteTextFile(folder / L"outside\\precious", "content");
        WriteTextFile(folder / L"outside\\scenario.log", "content");
    }

    std::string Outside() const { return text::ToUtf8(platform::ToNativeText(folder / L"outside")); }

    void ExpectOutsideUntouched() const {
        std::vector<platform::FolderEntry> entries;
        EXPECT_FALSE(platform::ListFolder(folder / L"outside", entries));
        EXPECT_EQ(entries.size(), 2U);
        EXPECT_EQ(ReadTextFile(folder / L"outside\\precious"), "content");
        EXPECT_EQ(ReadTextFile(folder / L"outside\\scenario.log"), "content");
    }

    bool RemoveWorkFolder() {
        WriteSettings();
        return ControllerCSWrapper::RemoveJobWorkDirectory(job.workDir);
    }
};

} // namespace

TEST_F(HostileWorkFolderTest, AScenarioThatDeletesItsWorkFolderFails) {
    UseSteps("delete work folder\nprint on\nexit 3");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 4);
    EXPECT_FALSE(platform::Exists(job.workDir));
}

TEST_F(HostileWorkFolderTest, AScenarioThatDeletedItsWorkFolderCanBeCancelled) {
    settings.graceSeconds = 0;
    UseSteps("ignore requests\ndelete work folder\nmake folder " + Outside() + "/../gone\nwait");
    ASSERT_EQ(Start(), 0);
    AwaitFile(folder.Path(), L"gone");
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitEnd(), 4);
    EXPECT_FALSE(platform::Exists(job.workDir));
}

TEST_F(HostileWorkFolderTest, NothingIsWrittenThroughALinkInThePlaceOfTheWorkFolder) {
    settings.logLimitBytes = 4096;
    UseSteps("replace work folder " + Outside() + "\nprint lines 1000\nexit 3");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 4);
    ExpectOutsideUntouched();
    EXPECT_FALSE(RemoveWorkFolder());
    ExpectOutsideUntouched();
}

TEST_F(HostileWorkFolderTest, NoRequestToStopIsMadeThroughALinkInThePlaceOfTheWorkFolder) {
    settings.graceSeconds = 0;
    UseSteps("ignore requests\nreplace work folder " + Outside() + "\nmake folder " + Outside() + "/../gone\nwait");
    ASSERT_EQ(Start(), 0);
    AwaitFile(folder.Path(), L"gone");
    EXPECT_EQ(Call("CancelScenario", job.jobId), 0);
    EXPECT_EQ(AwaitEnd(), 4);
    ExpectOutsideUntouched();
}

TEST_F(HostileWorkFolderTest, NothingIsWrittenThroughALinkInThePlaceOfTheFolderAbove) {
    ASSERT_FALSE(platform::EnsureFolder(folder / L"outside work\\3f9a0c1"));
    settings.logLimitBytes = 4096;
    UseSteps("replace parent folder " + text::ToUtf8(platform::ToNativeText(folder / L"outside work")) +
             "\nprint lines 1000\nexit 3");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 0);
    EXPECT_TRUE(platform::Exists(folder / L"work.moved\\3f9a0c1\\run_scenario_result.json"));
    std::vector<platform::FolderEntry> entries;
    ASSERT_FALSE(platform::ListFolder(folder / L"outside work\\3f9a0c1", entries));
    EXPECT_TRUE(entries.empty());
}

TEST_F(HostileWorkFolderTest, LinksInThePlaceOfTheLogAreNotWrittenThrough) {
    settings.logLimitBytes = 4096;
    for (const std::string kind : {"link", "hard link"}) {
        Run("make " + kind + " scenario.log " + Outside() + "/precious\nprint lines 1000\nexit 0");
        ExpectOutsideUntouched();
    }
}

TEST_F(HostileWorkFolderTest, LinksInThePlaceOfTheRequestToStopAreRequestsAndNotWrittenThrough) {
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

TEST_F(HostileWorkFolderTest, LinksInThePlaceOfTheResultAreReplacedThemselves) {
    for (const std::string kind : {"link", "hard link"}) {
        Run("make " + kind + " run_scenario_result.json " + Outside() + "/precious\nexit 3");
        EXPECT_EQ(FirstMessage(), L"The scenario ended with exit code 3 and wrote a result that cannot be read.");
        ExpectOutsideUntouched();
    }
}

TEST_F(HostileWorkFolderTest, ANamedPipeInThePlaceOfTheResultIsReplaced) {
    Run("make named pipe run_scenario_result.json\nexit 0");
    EXPECT_FALSE(Result().succeeded);
}

TEST_F(HostileWorkFolderTest, AnyTreeIsRemoved) {
    Run("dig 1000\nexit 0");
    EXPECT_TRUE(RemoveWorkFolder());
    EXPECT_FALSE(platform::Exists(job.workDir));
}

TEST_F(HostileWorkFolderTest, AFolderInThePlaceOfTheResultLeavesNone) {
    UseSteps("make folder run_scenario_result.json\nexit 0");
    ASSERT_EQ(Start(), 0);
    EXPECT_EQ(AwaitEnd(), 4);
    EXPECT_TRUE(RemoveWorkFolder());
}
