#include "kit/local_socket/EndpointNames.h"

#include <random>

#include "kit/TemporaryDirectory.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

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
