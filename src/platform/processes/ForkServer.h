#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "platform/processes/Process.h"

/// Processes that start as copies of one that has loaded its program and waits (a fork server): faster than to start
/// the program each time. Linux only.
namespace platform {

/// The side that gets the copies. They are children of this process, as if it had started the program itself.
/// Threads: one at a time.
class ForkServer {
public:
    ForkServer() = default;
    /// Ends the server. Copies run on.
    ~ForkServer();
    ForkServer(const ForkServer&) = delete;
    ForkServer& operator=(const ForkServer&) = delete;

    /// Ends the server and starts another one: a program that calls `ServeForks` with the handle whose text is added to
    /// its arguments. It is detached. Fails as `StartProcess` does, for lack of a thread, and with `NotSupported` on
    /// Windows.
    [[nodiscard]] Error Start(ProcessStart start);

    [[nodiscard]] bool IsRunning() const;

    /// The handle of a new copy, which has accepted `request`. Null if there is none and will be none: the server does
    /// not run, does not answer within two seconds, or could not make or prepare a copy. Then it is ended.
    [[nodiscard]] OwnedHandle Fork(const std::string& request);

    void End();

private:
    /// Without a thread ends and reaps the server itself.
    [[nodiscard]] Error StartReaper();
    /// Waits for the end of the server, and reaps it and its unfinished copies.
    void Reap(const OwnedHandle& server, std::int32_t group);
    [[nodiscard]] OwnedHandle ForkCopy(const std::string& request);

    /// Of the two handles, which the reaper closes, and of the server's process group while a copy leaves it.
    mutable std::mutex mutex;
    OwnedHandle line;
    OwnedHandle process;
    /// Reaps the server if it ends by itself, which may be long before the next call, with its unfinished copies, and
    /// keeps nothing of it.
    std::thread reaper;
};

/// The side of the server. Returns in each copy, with its request. Returns nothing in the server itself, when it has to
/// end: `owner` or the `ForkServer` has ended, no request came for `longestRest`, or a fork failed. A copy is in a
/// session of its own and calls `prepare` first; if that returns false, the copy ends and `Fork` has failed. Must be
/// called while this process has a single thread.
[[nodiscard]] std::optional<std::string> ServeForks(const OwnedHandle& line, void* owner,
                                                    std::chrono::milliseconds longestRest,
                                                    const std::function<bool(const std::string& request)>& prepare);

/// Changes a variable also in the environment that the system shows to other processes, which is the one of the start
/// of this process. Returns false if this process was started without the variable or with a shorter value. Must be
/// called while this process has a single thread.
[[nodiscard]] bool OverwriteStartVariable(const std::wstring& name, const std::wstring& value);

} // namespace platform
