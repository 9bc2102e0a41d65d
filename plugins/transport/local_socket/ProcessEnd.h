#pragma once

namespace local_socket {

/// Has `stop` called at the end of the process, or when this module is unloaded, where threads can still be ended then.
/// Called once.
void RegisterExitHandler(void (*stop)());

} // namespace local_socket
