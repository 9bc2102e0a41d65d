#pragma once

#include "platform/processes/Waiting.h"

namespace platform {

/// Converts stop requests of a user or the system (SIGINT, SIGTERM, SIGHUP; Ctrl-C, console close, log-off) into an
/// event that a loop can wait for. One per process, created by main().
class StopSignal {
public:
    StopSignal();
    ~StopSignal();
    StopSignal(const StopSignal&) = delete;
    StopSignal& operator=(const StopSignal&) = delete;

    void* Handle() const { return event.Handle(); }

private:
    Event event;
};

} // namespace platform
