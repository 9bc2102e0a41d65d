#include "controller_cli/ScratchFolder.h"

#include <stdexcept>

#include "companion/ControllerCSWrapper.h"
#include "platform/Directories.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"
#include "platform/Text.h"

namespace controller_cli {

ScratchFolder::ScratchFolder()
    : path(platform::TemporaryFolder() + L"\\controller_cli-" + ControllerCSWrapper::CreateGuid()) {
    if (const platform::Error error = platform::EnsurePrivateFolder(path)) {
        throw std::runtime_error(platform::ToUtf8(platform::ToNativeText(path) + L": " + error.Text()));
    }
}

ScratchFolder::~ScratchFolder() {
    platform::RemoveTree(path);
}

} // namespace controller_cli
