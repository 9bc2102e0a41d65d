#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include <string>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"
#include "text/Text.h"

namespace {

class WorkDirectoryRemovalTest : public testing::Test {
protected:
    WorkDirectoryRemovalTest() {
        WriteTextFile(directory / L"settings.json", R"({"workDirectory":"work"})");
        settings::UseFile(directory / L"settings.json");
        ControllerCSWrapper::ChangeLogFilePath(directory / L"controller.log");
        WriteTextFile(job + L"\\deep\\file.txt", "x");
        WriteTextFile(directory / L"workshop\\file.txt", "x");
    }
    ~WorkDirectoryRemovalTest() override {
        ControllerCSWrapper::ChangeLogFilePath(L"");
        settings::UseFile(L"");
    }

    /// Expects false, one warning that names path and reason, and no change.
    void ExpectRefused(const std::wstring& path, const std::string& reason) {
        EXPECT_FALSE(ControllerCSWrapper::RemoveJobWorkDirectory(path));
        const std::string log = ReadTextFile(directory / L"controller.log");
        EXPECT_NE(log.find("warning"), std::string::npos) << log;
        EXPECT_NE(log.find(text::ToUtf8(platform::ToNativeText(path))), std::string::npos) << log;
        EXPECT_NE(log.find(reason), std::string::npos) << log;
        EXPECT_TRUE(platform::Exists(job + L"\\deep\\file.txt"));
        EXPECT_TRUE(platform::Exists(directory / L"workshop\\file.txt"));
    }

    const TemporaryDirectory directory;
    const std::wstring work = directory / L"work";
    const std::wstring job = directory / L"work\\3f9a0c1";
};

} // namespace

TEST_F(WorkDirectoryRemovalTest, RemovesADirectoryWithAllItHolds) {
    EXPECT_TRUE(ControllerCSWrapper::RemoveJobWorkDirectory(job));
    EXPECT_FALSE(platform::Exists(job));
    EXPECT_TRUE(platform::IsDirectory(work));
}

TEST_F(WorkDirectoryRemovalTest, TakesSlashesAndDots) {
    EXPECT_TRUE(ControllerCSWrapper::RemoveJobWorkDirectory(work + L"/./other/../3f9a0c1/"));
    EXPECT_FALSE(platform::Exists(job));
}

TEST_F(WorkDirectoryRemovalTest, TakesTheTextUpToItsFirstZero) {
    EXPECT_TRUE(ControllerCSWrapper::RemoveJobWorkDirectory(job + std::wstring(1, L'\0') + L"rest"));
    EXPECT_FALSE(platform::Exists(job));
}

TEST_F(WorkDirectoryRemovalTest, HasNothingToDoForAMissingDirectory) {
    EXPECT_TRUE(ControllerCSWrapper::RemoveJobWorkDirectory(work + L"\\0e0e0e"));
}

TEST_F(WorkDirectoryRemovalTest, RefusesAnEmptyText) {
    ExpectRefused(L"", "the path is empty");
}

TEST_F(WorkDirectoryRemovalTest, RefusesATextThatBeginsWithZero) {
    EXPECT_FALSE(ControllerCSWrapper::RemoveJobWorkDirectory(std::wstring(1, L'\0') + job));
    EXPECT_TRUE(platform::Exists(job));
}

TEST_F(WorkDirectoryRemovalTest, RefusesARelativePath) {
    ExpectRefused(L"3f9a0c1", "the path is not absolute");
}

TEST_F(WorkDirectoryRemovalTest, RefusesARoot) {
    std::wstring root = directory.Path();
    while (!platform::ParentDirectory(root).empty() && platform::ParentDirectory(root) != root) {
        root = platform::ParentDirectory(root);
    }
    ExpectRefused(root, "it is a root folder");
}

TEST_F(WorkDirectoryRemovalTest, RefusesTheWorkDirectory) {
    ExpectRefused(work, "it is or holds the work directory");
}

TEST_F(WorkDirectoryRemovalTest, RefusesTheWorkDirectoryInOtherWords) {
    ExpectRefused(job + L"\\..", "it is or holds the work directory");
}

TEST_F(WorkDirectoryRemovalTest, RefusesWhatHoldsTheWorkDirectory) {
    ExpectRefused(directory.Path(), "it is or holds the work directory");
}

TEST_F(WorkDirectoryRemovalTest, RefusesADirectoryOutside) {
    ExpectRefused(directory / L"workshop", "it does not lie below the work directory");
}

TEST_F(WorkDirectoryRemovalTest, RefusesAWayOutThroughTheParent) {
    ExpectRefused(work + L"\\..\\workshop", "it does not lie below the work directory");
}

TEST_F(WorkDirectoryRemovalTest, RefusesAFile) {
    WriteTextFile(work + L"\\7e57f11e", "x");
    ExpectRefused(work + L"\\7e57f11e", "is not removed: ");
    EXPECT_TRUE(platform::Exists(work + L"\\7e57f11e"));
}

TEST_F(WorkDirectoryRemovalTest, RefusesDirectoriesThatAreNoJobs) {
    for (const wchar_t* const name :
         {L"Thesis", L"3f9a0c1.old", L"3F9A0C1B", L"123456789", L"photos\\3f9a0c1", L"-1"}) {
        WriteTextFile(work + L"\\" + name + L"\\precious.txt", "x");
        ExpectRefused(work + L"\\" + name, "it is not named as the work directories of jobs are");
        EXPECT_TRUE(platform::Exists(work + L"\\" + name + L"\\precious.txt"));
    }
}

TEST_F(WorkDirectoryRemovalTest, RefusesADirectoryInsideAJobs) {
    ExpectRefused(job + L"\\deep", "it is not named as the work directories of jobs are");
}
