#include "controller_web/http/PortOptions.h"

#include <winsock2.h>

namespace web {

/// Without it another program may listen at the same address.
bool OwnPort(std::uintptr_t socket) {
    const BOOL isOn = TRUE;
    return setsockopt(socket, SOL_SOCKET, SO_EXCLUSIVEADDRUSE, reinterpret_cast<const char*>(&isOn), sizeof isOn) == 0;
}

} // namespace web
