#include "platform/files/FileTime.h"

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "platform/system/Clock.h"

TEST(FileTimeTest, AFileThatWasWrittenNowHasTheTimeOfTheClock) {
    const TemporaryDirectory directory;
    const std::int64_t before = platform::Now();
    WriteTextFile(directory / L"a", "x");
    const std::int64_t written = platform::LastWriteTime(*platform::StampOf(directory / L"a"));
    // The clock of a file system may be a little behind.
    EXPECT_GE(written, before - 1);
    EXPECT_LE(written, platform::Now() + 1);
}
