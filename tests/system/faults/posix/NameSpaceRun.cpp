#include "system/faults/posix/NameSpaceRun.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "kit/TestProcess.h"
#include "platform/processes/OutputPipe.h"
#include "platform/processes/posix/ProcessDescriptor.h"
#include "platform/system/OwnedHandle.h"
#include "platform/system/posix/Descriptor.h"

namespace {

constexpr const char* ownVariable = "CONTROLLER_TEST_OWN_NAME_SPACE";
constexpr const char* ownProgram = "/proc/self/exe";
constexpr int notAllowed = 77;

void WriteLine(const char* path, const std::string& line) {
    std::ofstream(path) << line;
}

/// Mounting needs a private name space. Without the right to create one, root of a user name space has it.
bool EnterOwnNameSpace() {
    const std::string user = std::to_string(geteuid());
    const std::string group = std::to_string(getegid());
    if (unshare(CLONE_NEWNS) != 0) {
        if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
            return false;
        }
        WriteLine("/proc/self/setgroups", "deny");
        WriteLine("/proc/self/uid_map", user + ' ' + user + " 1");
        WriteLine("/proc/self/gid_map", group + ' ' + group + " 1");
    }
    return mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

std::string CurrentTest() {
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    return std::string(test.test_suite_name()) + '.' + test.name();
}

[[noreturn]] void BeTheChild(int output, const std::string& filter) {
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    // Opened first: the new name space changes its path.
    char program[4096] = {};
    const ssize_t length = readlink(ownProgram, program, sizeof program - 1);
    if (length <= 0 || !EnterOwnNameSpace()) {
        const std::string reason = std::string("a mount name space: ") + std::strerror(errno);
        std::_Exit(write(STDOUT_FILENO, reason.data(), reason.size()) < 0 ? 1 : notAllowed);
    }
    setenv(ownVariable, "1", 1);
    execl(program, program, filter.c_str(), nullptr);
    std::_Exit(1);
}

} // namespace

bool IsInOwnNameSpace() {
    return std::getenv(ownVariable) != nullptr;
}

void RunThisTestInOwnNameSpace() {
    platform::OutputPipe pipe;
    ASSERT_TRUE(pipe.Open());
    const std::string filter = "--gtest_filter=" + CurrentTest();
    const pid_t process = fork();
    if (process == 0) {
        BeTheChild(platform::DescriptorOf(pipe.WriteEnd()), filter);
    }
    ASSERT_GT(process, 0);
    const platform::OwnedHandle child(platform::HandleOf(platform::OpenProcessDescriptor(process)));
    pipe.CloseWriteEnd();
    const std::string output = test_support::ReadToEnd(pipe, CurrentTest() + " in a name space of its own");
    ASSERT_TRUE(test_support::WaitUntilSignalled(child.Get()));
    const auto exitCode = platform::ExitCode(child.Get());
    if (exitCode == notAllowed || output.find("[  SKIPPED ]") != std::string::npos) {
        GTEST_SKIP() << "this machine does not allow it: " << output;
    }
    EXPECT_EQ(exitCode, 0) << output;
}
