#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"
#include "text/Text.h"

namespace {

class WorkDirectoryLinksTest : public testing::Test {
protected:
    WorkDirectoryLinksTest() {
        WriteTextFile(directory / L"settings.json", R"({"workDirectory":"work"})");
        settings::UseFile(directory / L"settings.json");
        ControllerCSWrapper::ChangeLogFilePath(directory / L"controller.log");
        WriteTextFile(directory / L"work\\3f9a0c1\\file.txt", "x");
        WriteTextFile(precious, "x");
    }
    ~WorkDirectoryLinksTest() override {
        ControllerCSWrapper::ChangeLogFilePath(L"");
        settings::UseFile(L"");
    }

    void Link(const std::wstring& name, const std::wstring& target) const {
        const std::string path = text::ToUtf8(platform::ToNativeText(directory / name));
        ASSERT_EQ(symlink(text::ToUtf8(platform::ToNativeText(target)).c_str(), path.c_str()), 0);
    }

    bool Remove(const std::wstring& name) const {
        return ControllerCSWrapper::RemoveJobWorkDirectory(directory / name);
    }
    std::string Log() const { return ReadTextFile(directory / L"controller.log"); }

    const TemporaryDirectory directory;
    const std::wstring precious = directory / L"outside\\inner\\precious.txt";
};

} // namespace

TEST_F(WorkDirectoryLinksTest, RefusesALink) {
    Link(L"work\\0ff", directory / L"outside");
    EXPECT_FALSE(Remove(L"work\\0ff"));
    EXPECT_NE(Log().find("the path leads through the link "), std::string::npos) << Log();
    EXPECT_TRUE(platform::Exists(precious));
    EXPECT_TRUE(platform::IsLink(directory / L"work\\0ff"));
}

TEST_F(WorkDirectoryLinksTest, RefusesAWayThroughALink) {
    Link(L"work\\0ff", directory / L"outside");
    EXPECT_FALSE(Remove(L"work\\0ff\\inner"));
    EXPECT_TRUE(platform::Exists(precious));
}

TEST_F(WorkDirectoryLinksTest, RefusesALinkToWhatHoldsTheWorkDirectory) {
    Link(L"work\\0ff", directory.Path());
    EXPECT_FALSE(Remove(L"work\\0ff"));
    EXPECT_FALSE(Remove(L"work\\0ff\\work"));
    EXPECT_TRUE(platform::Exists(precious));
}

TEST_F(WorkDirectoryLinksTest, RemovesLinksInsideWithoutFollowingThem) {
    Link(L"work\\3f9a0c1\\link", directory / L"outside");
    EXPECT_TRUE(Remove(L"work\\3f9a0c1"));
    EXPECT_FALSE(platform::Exists(directory / L"work\\3f9a0c1"));
    EXPECT_TRUE(platform::Exists(precious));
}

TEST_F(WorkDirectoryLinksTest, TakesAWorkDirectoryThatIsALinkItself) {
    ASSERT_TRUE(platform::RenameFile(directory / L"work", directory / L"elsewhere"));
    Link(L"work", directory / L"elsewhere");
    EXPECT_TRUE(Remove(L"work\\3f9a0c1"));
    EXPECT_FALSE(platform::Exists(directory / L"elsewhere\\3f9a0c1"));
    EXPECT_FALSE(Remove(L"elsewhere"));
}
