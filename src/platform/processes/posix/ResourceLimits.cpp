#include "platform/processes/ResourceLimits.h"

#include "platform/processes/posix/ControlGroup.h"

namespace platform {

std::wstring PrepareResourceLimits() {
    return ClaimControlGroup(OwnControlGroup());
}

} // namespace platform
