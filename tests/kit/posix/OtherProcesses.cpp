#include "kit/OtherProcesses.h"

#include <csignal>
#include <filesystem>
#include <fstream>

#include "platform/files/posix/SystemPath.h"
#include "platform/processes/Orphans.h"
#include "platform/processes/Process.h"
#include "platform/processes/posix/ProcessDescriptor.h"
#include "platform/system/Clock.h"
#include "platform/system/Environment.h"
#include "platform/system/posix/Descriptor.h"

namespace test_support {
namespace {

constexpr const wchar_t* markVariable = L"CONTROLLER_TEST_PROGRAM";

/// Inherited by all processes started from here; set before the first one.
const std::wstring ownMark = [] {
    std::wstring mark = std::to_wstring(platform::OwnProcessNumber()) + L'.' + std::to_wstring(platform::Now());
    platform::SetEnvironment(markVariable, mark);
    return mark;
}();

} // namespace

platform::OwnedHandle OpenProcessByNumber(std::uint32_t number) {
    const int descriptor = platform::OpenProcessDescriptor(static_cast<pid_t>(number));
    return descriptor < 0 ? platform::OwnedHandle() : platform::OwnedHandle(platform::HandleOf(descriptor));
}

std::vector<std::uint32_t> ChildrenOf(std::uint32_t number) {
    std::vector<std::uint32_t> children;
    std::error_code ignored;
    for (const auto& thread :
         std::filesystem::directory_iterator("/proc/" + std::to_string(number) + "/task", ignored)) {
        std::ifstream file(thread.path() / "children");
        for (std::uint32_t child = 0; file >> child;) {
            children.push_back(child);
        }
    }
    return children;
}

int CountProcessesIn(const std::wstring& directory) {
    const std::string start = platform::SystemPath(directory);
    std::error_code ignored;
    int count = 0;
    for (const auto& process : std::filesystem::directory_iterator("/proc", ignored)) {
        // An ended process has none.
        const std::string current = std::filesystem::read_symlink(process.path() / "cwd", ignored);
        count += current.starts_with(start) ? 1 : 0;
    }
    return count;
}

bool HasBegun(std::uint32_t) {
    return true;
}

void KillProcess(void* process) {
    // By its descriptor, because the number of an ended process may be reused.
    pidfd_send_signal(platform::DescriptorOf(process), SIGKILL, nullptr, 0);
}

void EndAllStarted() {
    platform::KillProcessesByEnvironment(markVariable, {ownMark});
}

} // namespace test_support
