#include "transport/local_socket/ProcessEnd.h"

#include <cstdlib>

namespace local_socket {

/// Runs before the destructors of whatever stood before this module was loaded: handlers that a program holds in its
/// static objects are still there.
void RegisterExitHandler(void (*stop)()) {
    std::atexit(stop);
}

} // namespace local_socket
