#pragma once

namespace platform {

/// Makes a handle that this process inherited its own: children of this process do not get it unasked. False when it is
/// not an open handle.
[[nodiscard]] bool SetCloseOnExec(void* handle);

} // namespace platform
