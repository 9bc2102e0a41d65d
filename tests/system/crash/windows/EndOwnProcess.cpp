#include "system/crash/EndOwnProcess.h"

#include <windows.h>

void crash::EndOwnProcess() {
    for (;;) {
        TerminateProcess(GetCurrentProcess(), killedExitCode);
    }
}
