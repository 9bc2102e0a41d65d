#include "platform/system/Browser.h"

#include "platform/processes/Process.h"
#include "platform/system/Environment.h"

namespace platform {
namespace {

/// Without a display, xdg-open would start a browser in the terminal.
bool HasDisplay() {
    return GetEnvironment(L"DISPLAY").has_value() || GetEnvironment(L"WAYLAND_DISPLAY").has_value();
}

} // namespace

Error OpenInBrowser(const std::wstring& address) {
    if (!IsWebAddress(address)) {
        return {ErrorKind::NotSupported, 0};
    }
    if (!HasDisplay()) {
        return {ErrorKind::NotFound, 0};
    }
    ProcessStart start;
    start.program = L"xdg-open";
    start.searchPath = true;
    start.arguments = {address};
    start.detached = true;
    OwnedHandle process;
    return StartProcess(start, process);
}

} // namespace platform
