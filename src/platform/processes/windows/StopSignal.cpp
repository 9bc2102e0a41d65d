#include "platform/processes/StopSignal.h"

#include <atomic>

#include <windows.h>

namespace platform {
namespace {

/// Global, because a console handler gets only the type of the event.
std::atomic<Event*> raisedByConsole = nullptr;

/// The system ends the process when the handler of these events returns, or after some seconds.
bool IsEndComing(DWORD kind) {
    return kind == CTRL_CLOSE_EVENT || kind == CTRL_LOGOFF_EVENT || kind == CTRL_SHUTDOWN_EVENT;
}

BOOL WINAPI OnConsoleControl(DWORD kind) {
    Event* const event = raisedByConsole.load();
    if (event == nullptr) {
        return FALSE;
    }
    event->Raise();
    if (IsEndComing(kind)) {
        Sleep(INFINITE);
    }
    return TRUE;
}

} // namespace

StopSignal::StopSignal() {
    raisedByConsole = &event;
    SetConsoleCtrlHandler(OnConsoleControl, TRUE);
}

StopSignal::~StopSignal() {
    SetConsoleCtrlHandler(OnConsoleControl, FALSE);
    raisedByConsole = nullptr;
}

} // namespace platform
