#pragma once

#include <string>

namespace platform {

/// The text of a security identifier: "S-1-5-21-...". Empty if `sid` is none.
std::wstring SidText(void* sid);

/// The identifier of the user whose process this is; empty if the system does not tell. Threads: any.
std::wstring UserSidOf(void* process);

} // namespace platform
