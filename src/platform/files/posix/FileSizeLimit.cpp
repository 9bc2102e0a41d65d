#include "platform/files/FileSizeLimit.h"

#include <csignal>

namespace platform {

void IgnoreFileSizeSignal() {
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace platform
