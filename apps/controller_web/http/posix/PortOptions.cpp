#include "controller_web/http/PortOptions.h"

#include <sys/socket.h>

namespace web {

/// On Linux two servers can never listen at one address; the option only allows to listen again after connections have
/// ended.
bool OwnPort(std::uintptr_t socket) {
    const int isOn = 1;
    return setsockopt(static_cast<int>(socket), SOL_SOCKET, SO_REUSEADDR, &isOn, sizeof isOn) == 0;
}

} // namespace web
