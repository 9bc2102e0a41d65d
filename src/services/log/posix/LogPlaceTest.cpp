#include "services/log/RotatingFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

class LogPlaceTest : public testing::Test {
protected:
    std::string Native(const std::wstring& name) const {
        return text::ToUtf8(platform::ToNativeText(directory / name));
    }

    const TemporaryDirectory directory;
    log_file::RotatingFile file{{.bytes = 1000, .files = 3}};
};

} // namespace

TEST_F(LogPlaceTest, ANamedPipeWithoutAReaderHoldsNobodyUp) {
    ASSERT_EQ(mkfifo(Native(L"controller.log").c_str(), 0600), 0);
    file.SetPath(directory / L"controller.log");
    testing::internal::CaptureStderr();
    file.Append("record\n", 1);
    EXPECT_NE(testing::internal::GetCapturedStderr().find("cannot be written"), std::string::npos);
}

TEST_F(LogPlaceTest, ALinkOfTheUserToAnotherPlaceIsFollowed) {
    ASSERT_EQ(symlink(Native(L"elsewhere.log").c_str(), Native(L"controller.log").c_str()), 0);
    file.SetPath(directory / L"controller.log");
    file.Append("record\n", 1);
    EXPECT_EQ(ReadTextFile(directory / L"elsewhere.log"), "record\n");
}
