#include "platform/processes/Orphans.h"

namespace platform {

WorkerExit RunUnderSubreaper(const std::function<std::int32_t(void* subreaper)>& work) {
    return {work(nullptr), false};
}

std::size_t KillProcessesByEnvironment(const std::wstring&, const std::set<std::wstring>&) {
    return 0;
}

} // namespace platform
