#include "platform/processes/ProcessIdentity.h"

#include <fstream>
#include <sstream>
#include <string>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/processes/Process.h"
#include "platform/processes/posix/DescriptorHandle.h"
#include "platform/processes/posix/ProcessDescriptor.h"

namespace platform {
namespace {

std::string DirectoryOf(pid_t number) {
    return "/proc/" + std::to_string(number);
}

/// In clock ticks since boot; 0 if unknown.
std::int64_t StartOf(pid_t number) {
    std::ifstream file(DirectoryOf(number) + "/stat");
    std::string text;
    std::getline(file, text, '\0');
    // The name in parentheses may contain any characters, also blanks and parentheses.
    const std::size_t afterName = text.rfind(')');
    if (afterName == std::string::npos) {
        return 0;
    }
    constexpr int fieldsBefore = 19;
    std::istringstream fields(text.substr(afterName + 1));
    std::string skipped;
    for (int field = 0; field < fieldsBefore; ++field) {
        fields >> skipped;
    }
    std::int64_t start = 0;
    fields >> start;
    return start;
}

bool IsOwn(pid_t number) {
    struct stat status {};
    return stat(DirectoryOf(number).c_str(), &status) == 0 && status.st_uid == geteuid();
}

} // namespace

ProcessIdentity OwnProcessIdentity() {
    return {static_cast<std::uint32_t>(getpid()), StartOf(getpid())};
}

/// Opens the pidfd first: the start time read afterwards belongs to the same process, or to a later one, whose start
/// time differs.
OwnedHandle OpenProcess(const ProcessIdentity& process) {
    const auto number = static_cast<pid_t>(process.number);
    if (number <= 0 || process.start == 0) {
        return {};
    }
    const int descriptor = OpenProcessDescriptor(number);
    OwnedHandle opened = descriptor < 0 ? OwnedHandle() : OwnedHandle(HandleOf(descriptor));
    const bool isMeant = opened && StartOf(number) == process.start && IsOwn(number) && IsProcessRunning(opened.Get());
    return isMeant ? std::move(opened) : OwnedHandle();
}

bool AskOtherProcessToEnd(void* process) {
    RequestTermination(process);
    return true;
}

} // namespace platform
