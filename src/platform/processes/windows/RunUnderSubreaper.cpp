#include "platform/processes/RunUnderSubreaper.h"

namespace platform {

WorkerExit RunUnderSubreaper(const std::function<std::int32_t(void* subreaper)>& work) {
    return {work(nullptr), false};
}

} // namespace platform
