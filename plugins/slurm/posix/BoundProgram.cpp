#include "slurm/posix/BoundProgram.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <iterator>
#include <string_view>

#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/files/posix/SystemPath.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"

namespace slurm {

void BecomeBoundProgram(std::uint32_t parent, const std::wstring& program, const std::vector<std::wstring>& arguments) {
    prctl(PR_SET_PDEATHSIG, static_cast<unsigned long>(SIGTERM), 0UL, 0UL, 0UL);
    // The parent may have ended before.
    if (ParentProcessNumber() != parent) {
        return;
    }
    std::vector<std::string> words{platform::SystemPath(program)};
    std::transform(arguments.begin(), arguments.end(), std::back_inserter(words), text::ToUtf8);
    std::vector<char*> pointers;
    std::transform(words.begin(), words.end(), std::back_inserter(pointers),
                   [](std::string& word) { return word.data(); });
    pointers.push_back(nullptr);
    execv(pointers.front(), pointers.data());
}

std::uint32_t ParentProcessNumber() {
    return static_cast<std::uint32_t>(getppid());
}

void KillProcess(void* process) {
    syscall(SYS_pidfd_send_signal, platform::DescriptorOf(process), SIGKILL, nullptr, 0);
}

std::vector<std::wstring> SlurmVariables() {
    constexpr std::array<std::string_view, 3> beginnings = {"SLURM_", "SCANCEL_", "SQUEUE_"};
    std::vector<std::wstring> names;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view variable = *entry;
        const std::string_view name = variable.substr(0, variable.find('='));
        const auto begins = [&](std::string_view beginning) { return name.starts_with(beginning); };
        if (name != "SLURM_CONF" && std::any_of(beginnings.begin(), beginnings.end(), begins)) {
            names.push_back(text::FromUtf8(name));
        }
    }
    return names;
}

std::wstring MachineName() {
    std::array<char, 256> name{};
    gethostname(name.data(), name.size() - 1);
    return text::FromUtf8(name.data());
}

} // namespace slurm
