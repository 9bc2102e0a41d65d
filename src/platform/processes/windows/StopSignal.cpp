#include "platform/processes/StopSignal.h"

#include <atomic>

#include <windows.h>

namespace platform {
namespace {

/// A console handler is told nothing but the kind of its call.
std::atomic<Event*> raisedByConsole = nullptr;

/// The system ends the process as soon as the handler of these returns, or after some seconds.
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
