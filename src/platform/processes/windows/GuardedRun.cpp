#include "platform/processes/GuardedRun.h"

namespace platform {

GuardedEnd RunGuarded(const std::function<std::int32_t(void* guard)>& work) {
    return {work(nullptr), false};
}

} // namespace platform
