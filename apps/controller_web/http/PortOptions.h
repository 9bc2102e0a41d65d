#pragma once

#include <cstdint>

namespace web {

/// Prepares a socket that is not bound yet, so that no other program takes over its port, and so that a server that
/// starts again gets its port back at once. Returns false if the system refuses.
bool OwnPort(std::uintptr_t socket);

} // namespace web
