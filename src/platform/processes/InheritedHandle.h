#pragma once

namespace platform {

/// Marks an inherited handle close-on-exec, so that children of this process get it only if it is passed explicitly.
/// Returns false if it is not an open handle.
[[nodiscard]] bool SetCloseOnExec(void* handle);

} // namespace platform
