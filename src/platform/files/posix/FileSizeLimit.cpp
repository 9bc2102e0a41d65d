#include "platform/files/FileSizeLimit.h"

#include <csignal>

namespace platform {

void FailBeyondFileSizeLimit() {
    std::signal(SIGXFSZ, SIG_IGN);
}

} // namespace platform
