#include "transport/local_socket/ProcessEnd.h"

#include <cstdlib>

namespace local_socket {

/// Runs before the destructors of static objects that existed when this module was loaded: handlers that a program
/// keeps in static objects still exist.
void RegisterExitHandler(void (*stop)()) {
    std::atexit(stop);
}

} // namespace local_socket
