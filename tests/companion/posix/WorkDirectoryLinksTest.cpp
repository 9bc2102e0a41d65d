#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include <string>

#include <gtest/gtest.h>
#include <unistd.h>

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"
#include "support/TemporaryFolder.h"
#include "text/Text.h"

namespace {

class WorkDirectoryLinksTest : public testing::Test {
protected:
    WorkDirectoryLinksTest() {
        WriteTextFile(folder / L"settings.json", R"({"workDirectory":"work"})");
        settings::UseFile(folder / L"settings.json");
        ControllerCSWrapper::ChangeLogFilePath(folder / L"controller.log");
        WriteTextFile(folder / L"work\\3f9a0c1\\file.txt", "x");
        WriteTextFile(precious, "x");
    }
    ~WorkDirectoryLinksTest() override {
        ControllerCSWrapper::ChangeLogFilePath(L"");
        settings::UseFile(L"");
    }

    void Link(const std::wstring& name, const std::wstring& target) const {
        const std::string path = text::ToUtf8(platform::ToNativeText(folder / name));
        ASSERT_EQ(symlink(text::ToUtf8(platform::ToNativeText(target)).c_str(), path.c_str()), 0);
    }

    bool Remove(const std::wstring& name) const { return ControllerCSWrapper::RemoveJobWorkDirectory(folder / name); }
    std::string Log() const { return ReadTextFile(folder / L"controller.log"); }

    const TemporaryFolder folder;
    const std::wstring precious = folder / L"outside\\inner\\precious.txt";
};

} // namespace

TEST_F(WorkDirectoryLinksTest, RefusesALink) {
    Link(L"work\\0ff", folder / L"outside");
    EXPECT_FALSE(Remove(L"work\\0ff"));
    EXPECT_NE(Log().find("the path leads through the link "), std::string::npos) << Log();
    EXPECT_TRUE(platform::Exists(precious));
    EXPECT_TRUE(platform::IsLink(folder / L"work\\0ff"));
}

TEST_F(WorkDirectoryLinksTest, RefusesAWayThroughALink) {
    Link(L"work\\0ff", folder / L"outside");
    EXPECT_FALSE(Remove(L"work\\0ff\\inner"));
    EXPECT_TRUE(platform::Exists(precious));
}

TEST_F(WorkDirectoryLinksTest, RefusesALinkToWhatHoldsTheWorkDirectory) {
    Link(L"work\\0ff", folder.Path());
    EXPECT_FALSE(Remove(L"work\\0ff"));
    EXPECT_FALSE(Remove(L"work\\0ff\\work"));
    EXPECT_TRUE(platform::Exists(precious));
}

TEST_F(WorkDirectoryLinksTest, RemovesLinksInsideWithoutFollowingThem) {
    Link(L"work\\3f9a0c1\\link", folder / L"outside");
    EXPECT_TRUE(Remove(L"work\\3f9a0c1"));
    EXPECT_FALSE(platform::Exists(folder / L"work\\3f9a0c1"));
    EXPECT_TRUE(platform::Exists(precious));
}

TEST_F(WorkDirectoryLinksTest, TakesAWorkDirectoryThatIsALinkItself) {
    ASSERT_FALSE(platform::RenameFile(folder / L"work", folder / L"elsewhere"));
    Link(L"work", folder / L"elsewhere");
    EXPECT_TRUE(Remove(L"work\\3f9a0c1"));
    EXPECT_FALSE(platform::Exists(folder / L"elsewhere\\3f9a0c1"));
    EXPECT_FALSE(Remove(L"elsewhere"));
}
