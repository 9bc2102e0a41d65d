#include "platform/processes/posix/ProcessList.h"

#include <cstdlib>
#include <string_view>

#include "platform/files/posix/DirectoryListing.h"

namespace platform {

std::vector<pid_t> ListProcesses() {
    std::vector<pid_t> processes;
    const DirectoryListing directory(opendir("/proc"));
    while (const dirent* const entry = directory ? readdir(directory.get()) : nullptr) {
        if (std::string_view(entry->d_name).find_first_not_of("0123456789") == std::string_view::npos) {
            processes.push_back(static_cast<pid_t>(std::strtol(entry->d_name, nullptr, 10)));
        }
    }
    return processes;
}

} // namespace platform
