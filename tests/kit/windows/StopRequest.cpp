#include <windows.h>

#include "kit/StopRequest.h"

bool AskThisProcessToStop() {
    // Wine has no such event for its simulated console.
    return GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) != 0;
}
