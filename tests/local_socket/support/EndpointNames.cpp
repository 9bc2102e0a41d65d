#include "local_socket/support/EndpointNames.h"

#include <random>

#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "support/TemporaryDirectory.h"

namespace {

void UseOwnRuntimeDirectory() {
    static const TemporaryDirectory directory;
    platform::SetEnvironment(L"XDG_RUNTIME_DIR", platform::ToNativeText(directory.Path()));
}

} // namespace

std::string NewEndpointName() {
    static const bool isPrepared = (UseOwnRuntimeDirectory(), true);
    static_cast<void>(isPrepared);
    std::random_device random;
    return "t" + std::to_string(random());
}
