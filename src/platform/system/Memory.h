#pragma once

namespace platform {

/// Returns large memory blocks to the system as soon as they are freed, for long-running processes with occasional
/// peaks. Called once by main(), before other threads exist.
void TrimHeapEagerly();

} // namespace platform
