#include "platform/processes/posix/ControlGroup.h"

#include <array>
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/posix/SystemPath.h"

namespace {

namespace fs = std::filesystem;

/// The tests use ordinary directories in place of the system's groups.
class ControlGroupTest : public testing::Test {
protected:
    std::string Group(const std::string& name = "") const {
        const std::string path = platform::SystemPath(directory.Path()) + "/a.service" + name;
        fs::create_directories(path);
        return path;
    }

    static std::string Read(const std::string& path) { return ReadTextFile(platform::LibraryPath(path)); }
    static void Write(const std::string& path, std::string_view text) {
        WriteTextFile(platform::LibraryPath(path), text);
    }

    /// As a service manager delegates it.
    std::string Delegated() const {
        const std::string group = Group();
        Write(group + "/cgroup.controllers", "cpu memory pids\n");
        Write(group + "/cgroup.procs", std::to_string(getpid()) + "\n");
        return group;
    }

    /// The only group in `parent` of a run.
    static std::string RunGroup(const std::string& parent) { return parent + "/job-" + std::to_string(getpid()); }

    const TemporaryDirectory directory;
    std::wstring problem;
};

TEST_F(ControlGroupTest, TheGroupOfVersion2IsFoundInEveryLayout) {
    EXPECT_EQ(platform::ControlGroupIn("0::/user.slice/a.service\n"), "/user.slice/a.service");
    EXPECT_EQ(platform::ControlGroupIn("4:memory:/x\n10::/y\n1:cpu:/z\n0::/\n"), "/");
    EXPECT_EQ(platform::ControlGroupIn("4:memory:/x\n"), "");
    EXPECT_EQ(platform::ControlGroupIn(""), "");
}

TEST_F(ControlGroupTest, AClaimedGroupHasItsClaimerInAGroupBelowAndDistributesMemory) {
    const std::string group = Delegated();
    EXPECT_TRUE(platform::ClaimControlGroup(group, problem)) << problem;
    EXPECT_EQ(Read(group + "/controller_host/cgroup.procs"), "0");
    EXPECT_EQ(Read(group + "/cgroup.subtree_control"), "+memory");
}

TEST_F(ControlGroupTest, AClaimRemovesEmptyGroupsOfEarlierRuns) {
    const std::string group = Delegated();
    const std::string left = Group("/job-1");
    const std::string foreign = Group("/other");
    EXPECT_TRUE(platform::ClaimControlGroup(group, problem)) << problem;
    EXPECT_FALSE(fs::exists(left));
    EXPECT_TRUE(fs::exists(foreign));
}

TEST_F(ControlGroupTest, AGroupThatIsNotForTheHostAloneIsLeftAsItIs) {
    const std::string group = Delegated();
    Write(group + "/cgroup.procs", std::to_string(getpid()) + "\n1\n");
    EXPECT_FALSE(platform::ClaimControlGroup(group, problem));
    EXPECT_NE(problem.find(L"was not made for the host alone"), std::wstring::npos) << problem;
    EXPECT_FALSE(fs::exists(group + "/controller_host"));
}

TEST_F(ControlGroupTest, WithoutControlOfMemoryThereIsNoClaim) {
    EXPECT_FALSE(platform::ClaimControlGroup("", problem));
    EXPECT_EQ(problem, L"this system has no control groups of version 2");
    const std::string group = Delegated();
    Write(group + "/cgroup.controllers", "hugetlb\n");
    EXPECT_FALSE(platform::ClaimControlGroup(group, problem));
    EXPECT_NE(problem.find(L"does not control memory"), std::wstring::npos) << problem;
}

TEST_F(ControlGroupTest, TheClaimedGroupIsTheOneAboveTheClaimer) {
    const std::string group = Group();
    Write(group + "/cgroup.subtree_control", "cpu memory\n");
    std::string claimed;
    EXPECT_TRUE(platform::FindClaimedGroup(group + "/controller_host", {1, 1}, claimed, problem)) << problem;
    EXPECT_EQ(claimed, group);
    EXPECT_FALSE(platform::FindClaimedGroup(group, {1, 1}, claimed, problem));
    EXPECT_NE(problem.find(L"\"Delegate=yes\""), std::wstring::npos) << problem;
}

TEST_F(ControlGroupTest, OnlyWhatIsLimitedMustBeDistributed) {
    const std::string group = Group();
    Write(group + "/cgroup.subtree_control", "memory\n");
    std::string claimed;
    EXPECT_TRUE(platform::FindClaimedGroup(group + "/controller_host", {1, 0}, claimed, problem)) << problem;
    EXPECT_FALSE(platform::FindClaimedGroup(group + "/controller_host", {1, 1}, claimed, problem));
    EXPECT_NE(problem.find(L"distribute \"cpu\""), std::wstring::npos) << problem;
}

TEST_F(ControlGroupTest, TheLimitsAreWrittenInTheUnitsOfTheSystem) {
    const std::string parent = Group();
    platform::ControlGroup group;
    EXPECT_TRUE(group.Create(parent, {std::int64_t{512} << 20, 150}, problem)) << problem;
    EXPECT_TRUE(group.Exists());
    EXPECT_EQ(Read(RunGroup(parent) + "/memory.max"), "536870912");
    EXPECT_EQ(Read(RunGroup(parent) + "/memory.swap.max"), "0");
    EXPECT_EQ(Read(RunGroup(parent) + "/memory.oom.group"), "1");
    EXPECT_EQ(Read(RunGroup(parent) + "/cpu.max"), "150000 100000");
}

TEST_F(ControlGroupTest, WhatIsNotLimitedIsNotWritten) {
    const std::string parent = Group();
    platform::ControlGroup group;
    EXPECT_TRUE(group.Create(parent, {}, problem)) << problem;
    EXPECT_TRUE(fs::is_empty(RunGroup(parent)));
}

TEST_F(ControlGroupTest, AGroupThatCannotBeMadeSaysWhy) {
    platform::ControlGroup group;
    EXPECT_FALSE(group.Create("/proc/none", {1, 0}, problem));
    EXPECT_NE(problem.find(L"/proc/none/job-"), std::wstring::npos) << problem;
    EXPECT_FALSE(group.Exists());
}

TEST_F(ControlGroupTest, ProcessesEnterAndLeaveByTheNumberOfTheWriter) {
    const std::string parent = Group();
    platform::ControlGroup group;
    ASSERT_TRUE(group.Create(parent, {}, problem)) << problem;
    EXPECT_TRUE(group.Enter());
    EXPECT_EQ(Read(RunGroup(parent) + "/cgroup.procs"), "0");
    EXPECT_TRUE(group.Leave(parent));
    EXPECT_EQ(Read(parent + "/cgroup.procs"), "0");
}

TEST_F(ControlGroupTest, AKillForMemoryIsReadFromTheEvents) {
    const std::string parent = Group();
    platform::ControlGroup group;
    ASSERT_TRUE(group.Create(parent, {}, problem)) << problem;
    EXPECT_FALSE(group.HasExceededMemory());
    Write(RunGroup(parent) + "/memory.events", "low 0\nmax 7\noom 1\noom_kill 0\n");
    EXPECT_FALSE(group.HasExceededMemory());
    Write(RunGroup(parent) + "/memory.events", "low 0\nmax 7\noom 1\noom_kill 2\n");
    EXPECT_TRUE(group.HasExceededMemory());
}

/// With the groups of the system, where this user may make some: without limits, which few machines delegate.
TEST_F(ControlGroupTest, AChildThatIsStartedInAGroupOfTheSystemBelongsToIt) {
    const std::string own = platform::OwnControlGroup();
    platform::ControlGroup group;
    if (own.empty() || !group.Create(own, {}, problem)) {
        GTEST_SKIP() << "No control group can be made here.";
    }
    if (!group.Enter()) {
        GTEST_SKIP() << "The control group cannot be entered here.";
    }
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
        char byte = 0;
        _exit(read(pipe[0], &byte, 1) == 1 ? 0 : 1);
    }
    EXPECT_TRUE(group.Leave(own));
    EXPECT_EQ(platform::OwnControlGroup(), own);
    EXPECT_TRUE(platform::ControlGroupIn(Read("/proc/" + std::to_string(child) + "/cgroup"))
                    .ends_with("/job-" + std::to_string(getpid())));
    EXPECT_EQ(write(pipe[1], "x", 1), 1);
    EXPECT_EQ(waitpid(child, nullptr, 0), child);
}

} // namespace
