#include "platform/processes/Process.h"

#include <csignal>
#include <cstring>
#include <fstream>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/files/posix/SystemPath.h"
#include "platform/processes/posix/ProcessDescriptor.h"
#include "platform/processes/posix/Spawn.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"

namespace platform {
namespace {

/// The lowest three descriptors are a child's standard streams and cannot carry anything else.
OwnedHandle AboveStandardStreams(OwnedHandle handle) {
    return DescriptorOf(handle) > STDERR_FILENO ? std::move(handle) : OwnedHandle(CopyHandle(handle.Get()));
}

} // namespace

Error StartProcess(const ProcessStart& start, void* errorOutput, OwnedHandle& process) {
    return Spawn(start, SpawnGroup::Parents, errorOutput, process);
}

OwnedHandle OpenSelf() {
    return AboveStandardStreams(OwnedHandle(HandleOf(OpenProcessDescriptor(getpid()))));
}

bool SetCloseOnExec(void* handle) {
    const int descriptor = DescriptorOf(handle);
    return descriptor >= 0 && fcntl(descriptor, F_SETFD, FD_CLOEXEC) == 0;
}

bool RequestTermination(void* process) {
    for (const int signal : {SIGTERM, SIGCONT}) {
        pidfd_send_signal(DescriptorOf(process), signal, nullptr, 0);
    }
    return true;
}

std::optional<std::int32_t> ExitCode(void* process) {
    const int descriptor = DescriptorOf(process);
    siginfo_t ended{};
    if (descriptor < 0 || waitid(P_PIDFD, static_cast<id_t>(descriptor), &ended, WEXITED | WNOHANG | WNOWAIT) != 0 ||
        ended.si_pid == 0) {
        return std::nullopt;
    }
    return ExitStatusOf(ended);
}

bool IsCrash(std::int32_t exitCode) {
    return exitCode > signalExitBase && exitCode - signalExitBase < NSIG;
}

std::wstring ExitCodeText(std::int32_t exitCode) {
    const std::wstring text = L"exit code " + std::to_wstring(exitCode);
    const int number = exitCode - signalExitBase;
    const char* const name = number > 0 && number < NSIG ? sigdescr_np(number) : nullptr;
    return name == nullptr ? text : text + L" (signal " + std::to_wstring(number) + L", " + text::FromUtf8(name) + L")";
}

std::uint32_t ProcessNumber(void* process) {
    std::ifstream description("/proc/self/fdinfo/" + std::to_string(DescriptorOf(process)));
    for (std::string name; description >> name;) {
        if (std::int64_t number = 0; name == "Pid:" && description >> number) {
            return number > 0 ? static_cast<std::uint32_t>(number) : 0;
        }
    }
    return 0;
}

std::uint32_t OwnProcessNumber() {
    return static_cast<std::uint32_t>(getpid());
}

std::uint32_t OwnThreadNumber() {
    return static_cast<std::uint32_t>(gettid());
}

bool IsProgramName(const std::wstring&) {
    return true;
}

bool IsProgramFile(const std::wstring& path) {
    const std::string native = SystemPath(path);
    struct stat status {};
    return stat(native.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(native.c_str(), X_OK) == 0;
}

std::vector<std::wstring> ProgramFileNames(const std::wstring& name) {
    return {name};
}

} // namespace platform
