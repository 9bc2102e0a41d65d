#include "kit/programs/StopRequests.h"

#include <csignal>

void IgnoreStopRequests() {
    std::signal(SIGTERM, SIG_IGN);
}
