#include "platform/processes/Waiting.h"

#include <algorithm>
#include <system_error>

#include <windows.h>

#include "platform/files/windows/SystemPath.h"

namespace platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

DWORD RemainingTime(std::optional<steady_clock::time_point> deadline) {
    if (!deadline) {
        return INFINITE;
    }
    constexpr milliseconds longest = std::chrono::hours(24);
    const auto remaining = std::chrono::ceil<milliseconds>(*deadline - steady_clock::now());
    return static_cast<DWORD>(std::clamp(remaining, milliseconds(0), longest).count());
}

DWORD WaitOnce(const std::vector<void*>& handles, DWORD time) {
    if (handles.empty()) {
        Sleep(time);
        return WAIT_TIMEOUT;
    }
    return WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), FALSE, time);
}

bool IsNotWaiting(void* handle) {
    return WaitForSingleObject(handle, 0) != WAIT_TIMEOUT;
}

} // namespace

// Windows waits for at most 64 handles.
const std::int32_t mostWaitedProcesses = 60;

std::optional<std::size_t> WaitForAny(const std::vector<void*>& handles, std::optional<milliseconds> timeout) {
    const auto deadline = timeout ? std::optional(steady_clock::now() + *timeout) : std::nullopt;
    for (;;) {
        const DWORD remaining = RemainingTime(deadline);
        const DWORD result = WaitOnce(handles, remaining);
        if (result != WAIT_TIMEOUT) {
            const auto first = std::find_if(handles.begin(), handles.end(), IsNotWaiting);
            return first == handles.end() ? result - WAIT_OBJECT_0 : static_cast<std::size_t>(first - handles.begin());
        }
        if (remaining == 0) {
            return std::nullopt;
        }
    }
}

Event::Event() : handle(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    if (!handle) {
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), "CreateEvent");
    }
}

void Event::Raise() {
    SetEvent(handle.Get());
}

void Event::Clear() {
    ResetEvent(handle.Get());
}

DirectoryWatch::DirectoryWatch(const std::wstring& directory) {
    const HANDLE watch =
        FindFirstChangeNotificationW(SystemPath(directory).c_str(), FALSE, FILE_NOTIFY_CHANGE_FILE_NAME);
    handle = watch == INVALID_HANDLE_VALUE ? nullptr : watch;
}

DirectoryWatch::~DirectoryWatch() {
    if (handle != nullptr) {
        FindCloseChangeNotification(handle);
    }
}

void DirectoryWatch::Rearm() {
    if (handle != nullptr) {
        FindNextChangeNotification(handle);
    }
}

} // namespace platform
