#include <gtest/gtest.h>

#include "kit/TestProcess.h"
#include "platform/files/posix/SystemPath.h"
#include "platform/system/posix/NeededLibraries.h"

/// Loading libraries takes longer than everything else that the runner does in a short job.
TEST(RunnerLibrariesTest, TheRunnerNeedsNoSharedLibrary) {
    EXPECT_TRUE(platform::NeededLibraries(platform::SystemPath(test_support::ProgramPath(L"scenario_runner"))).empty());
}

TEST(RunnerLibrariesTest, AProgramWithSharedLibrariesNamesThem) {
    EXPECT_FALSE(platform::NeededLibraries(platform::SystemPath(test_support::ProgramPath(L"test_process"))).empty());
}
