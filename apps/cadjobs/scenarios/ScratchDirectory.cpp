#include "cadjobs/scenarios/ScratchDirectory.h"

#include <random>

#include "front_end/commands/CommandFailure.h"
#include "platform/files/Directory.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "platform/system/Environment.h"
#include "text/Hexadecimal.h"

namespace front_end {
namespace {

std::wstring DrawName() {
    std::random_device random(platform::randomSource);
    return L"cadjobs-" + text::HexadecimalText(random()) + text::HexadecimalText(random());
}

} // namespace

ScratchDirectory::ScratchDirectory() : path(platform::TemporaryDirectory() + L"\\" + DrawName()) {
    if (const platform::Error result = platform::MakePrivateDirectory(path); !result) {
        throw CommandFailure{ExitCode::Usage, platform::ToNativeText(path) + L": " + result.Text()};
    }
}

ScratchDirectory::~ScratchDirectory() {
    // What another process still holds open stays behind in a directory for temporary files.
    (void)platform::RemoveTree(path);
}

} // namespace front_end
