#include "scenario_runner/Supervisor.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "kit/TestProcess.h"

using scenario_runner::StopPolicy;
using scenario_runner::Supervisor;

namespace {

bool IsInotify(const std::filesystem::directory_entry& descriptor) {
    std::error_code gone;
    return std::filesystem::read_symlink(descriptor, gone).string().find("inotify") != std::string::npos;
}

/// The number of inotify instances of this process.
std::ptrdiff_t InotifyInstances() {
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return std::count_if(begin(descriptors), end(descriptors), IsInotify);
}

/// Supervises a scenario that was asked to stop before its start; returns the number of open instances at its end.
std::ptrdiff_t InstancesOfARun(platform::ProcessTree& tree, std::chrono::milliseconds watchAfter) {
    const TemporaryDirectory workDir;
    const std::vector<void*> owners;
    const platform::StopSignal stopSignal;
    WriteTextFile(workDir / L"killprocess", "");
    Supervisor supervision(tree, owners, workDir.Path(), stopSignal, nullptr, watchAfter);
    supervision.Run(StopPolicy({}, std::chrono::steady_clock::now()));
    return InotifyInstances();
}

std::ptrdiff_t InstancesOfARun(std::chrono::milliseconds watchAfter) {
    platform::ProcessTree tree;
    EXPECT_TRUE(tree.Start(test_support::TestProcess({L"wait"})));
    return InstancesOfARun(tree, watchAfter);
}

} // namespace

TEST(DirectoryWatchUseTest, AScenarioThatHasEndedIsNotWatched) {
    platform::ProcessTree tree;
    ASSERT_TRUE(tree.Start(test_support::TestProcess({L"exit", L"0"})));
    ASSERT_TRUE(test_support::WaitUntilSignalled(tree.Root()));
    EXPECT_EQ(InstancesOfARun(tree, std::chrono::milliseconds(0)), 0);
}

TEST(DirectoryWatchUseTest, AYoungRunIsNotWatched) {
    EXPECT_EQ(InstancesOfARun(Supervisor::timeWithoutWatch), 0);
}

TEST(DirectoryWatchUseTest, AnOlderRunIsWatched) {
    EXPECT_EQ(InstancesOfARun(std::chrono::milliseconds(0)), 1);
}
