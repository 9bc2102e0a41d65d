#pragma once

#include "platform/Process.h"

namespace platform {

/// A process that has been created and whose first thread waits to be resumed.
struct SuspendedProcess {
    OwnedHandle process;
    OwnedHandle thread;
};

/// Creates a process that inherits exactly what `start` names, without a window.
Error CreateSuspended(const ProcessStart& start, SuspendedProcess& created);

/// Lets it run; one that cannot be resumed is ended.
Error Resume(const SuspendedProcess& created);

} // namespace platform
