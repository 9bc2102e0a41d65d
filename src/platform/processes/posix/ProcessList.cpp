#include "platform/processes/posix/ProcessList.h"

#include <cstdlib>
#include <string_view>

#include "platform/files/posix/FolderListing.h"

namespace platform {

std::vector<pid_t> ListProcesses() {
    std::vector<pid_t> processes;
    const FolderListing folder(opendir("/proc"));
    while (const dirent* const entry = folder ? readdir(folder.get()) : nullptr) {
        if (std::string_view(entry->d_name).find_first_not_of("0123456789") == std::string_view::npos) {
            processes.push_back(static_cast<pid_t>(std::strtol(entry->d_name, nullptr, 10)));
        }
    }
    return processes;
}

} // namespace platform
