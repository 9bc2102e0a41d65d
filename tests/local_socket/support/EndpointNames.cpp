#include "local_socket/support/EndpointNames.h"

#include <random>

#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "support/TemporaryFolder.h"

namespace {

void UseOwnRuntimeFolder() {
    static const TemporaryFolder folder;
    platform::SetEnvironment(L"XDG_RUNTIME_DIR", platform::ToNativeText(folder.Path()));
}

} // namespace

std::string NewEndpointName() {
    static const bool isPrepared = (UseOwnRuntimeFolder(), true);
    static_cast<void>(isPrepared);
    std::random_device random;
    return "t" + std::to_string(random());
}
