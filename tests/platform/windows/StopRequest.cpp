#include <windows.h>

#include "platform/StopRequest.h"

bool AskThisProcessToStop() {
    // Wine has no such event for a console that it only pretends to have.
    return GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0) != 0;
}
