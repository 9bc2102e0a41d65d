#include "kit/StopRequest.h"

#include <csignal>

bool AskThisProcessToStop() {
    return std::raise(SIGTERM) == 0;
}
