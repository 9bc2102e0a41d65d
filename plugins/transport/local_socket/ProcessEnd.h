#pragma once

namespace local_socket {

/// Registers `stop` to be called at process exit or when this module is unloaded, if threads can still be ended then.
/// Call once.
void RegisterExitHandler(void (*stop)());

} // namespace local_socket
