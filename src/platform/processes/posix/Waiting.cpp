#include "platform/processes/Waiting.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <iterator>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "platform/files/posix/SystemPath.h"
#include "platform/system/posix/Descriptor.h"

namespace platform {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr int forever = -1;

int RemainingTime(std::optional<steady_clock::time_point> deadline) {
    if (!deadline) {
        return forever;
    }
    constexpr milliseconds longest = std::chrono::hours(24);
    const auto remaining = std::chrono::ceil<milliseconds>(*deadline - steady_clock::now());
    return static_cast<int>(std::clamp(remaining, milliseconds(0), longest).count());
}

/// Delay before a retry. Causes are a lack of memory or a lowered limit of open files; both are temporary.
void RestAfterFailure() {
    constexpr int restMilliseconds = 10;
    poll(nullptr, 0, restMilliseconds);
}

} // namespace

// Limited by the number of open files only, usually 1024.
const std::int32_t mostWaitedProcesses = 500;

std::optional<std::size_t> WaitForAny(const std::vector<void*>& handles, std::optional<milliseconds> timeout) {
    std::vector<pollfd> looks;
    std::transform(handles.begin(), handles.end(), std::back_inserter(looks), [](void* handle) {
        return pollfd{DescriptorOf(handle), POLLIN, 0};
    });
    const auto deadline = timeout ? std::optional(steady_clock::now() + *timeout) : std::nullopt;
    for (;;) {
        const int remaining = RemainingTime(deadline);
        const int looked = poll(looks.data(), looks.size(), remaining);
        if (looked > 0) {
            const auto first =
                std::find_if(looks.begin(), looks.end(), [](const pollfd& look) { return look.revents != 0; });
            return static_cast<std::size_t>(first - looks.begin());
        }
        if (remaining == 0) {
            return std::nullopt;
        }
        if (looked < 0 && errno != EINTR) {
            RestAfterFailure();
        }
    }
}

Event::Event() {
    const int descriptor = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
    handle = OwnedHandle(HandleOf(descriptor));
}

void Event::Raise() {
    constexpr std::uint64_t one = 1;
    // Fails only if the event is already raised.
    [[maybe_unused]] const ssize_t written = write(DescriptorOf(handle.Get()), &one, sizeof one);
}

void Event::Clear() {
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t taken = read(DescriptorOf(handle.Get()), &count, sizeof count);
}

DirectoryWatch::DirectoryWatch(const std::wstring& directory) {
    OwnedHandle watch(HandleOf(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)));
    constexpr std::uint32_t changes = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_ONLYDIR;
    if (inotify_add_watch(DescriptorOf(watch), SystemPath(directory).c_str(), changes) >= 0) {
        handle = watch.Release();
    }
}

DirectoryWatch::~DirectoryWatch() {
    CloseProcessHandle(handle);
}

void DirectoryWatch::Rearm() {
    std::array<char, 4096> events;
    while (handle != nullptr && read(DescriptorOf(handle), events.data(), events.size()) > 0) {
    }
}

} // namespace platform
