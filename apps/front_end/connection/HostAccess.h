#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "formats/HostLock.h"

class EventTransmitter;
class EventTransmitterExtension;

namespace front_end {

/// Result of asking a host to end.
enum class HostEnd : std::int32_t {
    Ended,
    /// It was asked, but did not end in time.
    StillRunning,
    /// No way to ask it is available.
    CannotBeAsked
};

/// Access to the host: connects to it, and starts it if none runs.
class HostAccess {
public:
    /// The module through which front ends and the host exchange events, and the client of this process.
    virtual const std::wstring& TransmitterModule() const = 0;
    virtual const std::wstring& TransmitterId() const = 0;

    /// The client of this process; every call returns the same object, owned by the module. Its extension reports
    /// whether a host is connected. Null if the module cannot be used.
    virtual EventTransmitter* Transmitter() = 0;

    /// Why there is no transmitter, as the end of a sentence about the module.
    virtual std::wstring TransmitterProblem() = 0;

    /// The extension of the transmitter; null if the module has none.
    virtual EventTransmitterExtension* Extension() = 0;

    /// True if a process is the host or is starting as one, even if it is not reachable yet.
    virtual bool IsHostThere() = 0;

    /// The host of the configured job list as its lock describes it; nothing if none runs.
    virtual std::optional<host_lock::Holder> RunningHost() = 0;

    /// What the program of the host that would be started says about its version; its error otherwise.
    virtual std::wstring HostProgramVersion() = 0;

    /// Starts a host in a separate process, and returns when it is reachable. A host that is already running or
    /// starting is a success. `warnings` are the lines in which the started host reports problems that would make jobs
    /// fail; empty if a host already existed. On failure returns false and sets `problem`.
    [[nodiscard]] virtual bool StartHost(std::wstring& warnings, std::wstring& problem) = 0;

    /// Runs a host in the foreground and returns its exit code when it has ended. If it cannot be started, returns
    /// nothing and sets `problem`.
    [[nodiscard]] virtual std::optional<std::int32_t> RunHost(std::wstring& problem) = 0;

    /// Runs `controller_web` with these arguments, forwards what it prints, and returns its exit code when it has
    /// ended. If it cannot be started, returns nothing and sets `problem`.
    [[nodiscard]] virtual std::optional<std::int32_t> RunWebProgram(const std::vector<std::wstring>& arguments,
                                                                    std::wstring& problem) = 0;

    /// Describes the host of the configured job list if it listens at another endpoint than this client uses: "process
    /// 4711, since ..., at ...". Empty if there is none, or if the host has not published its endpoint yet.
    virtual std::wstring HostElsewhere() = 0;

    /// The endpoint where this client looks for a host, as the module describes it; empty if it does not.
    virtual std::wstring Place() = 0;

    /// Asks that host to end by means that need no connection of this client, and waits for its end up to `timeout`.
    virtual HostEnd EndRunningHost(std::chrono::milliseconds timeout) = 0;

    /// The running hosts that were started with the settings file in use, even if the file has changed since.
    virtual std::vector<host_lock::Holder> HostsOfSettingsFile() = 0;

    /// Asks one of these hosts to end, and waits for its end up to `timeout`.
    virtual HostEnd EndHostOfSettingsFile(const host_lock::Holder& holder, std::chrono::milliseconds timeout) = 0;

protected:
    HostAccess() = default;
    HostAccess(const HostAccess&) = default;
    HostAccess& operator=(const HostAccess&) = default;
    ~HostAccess() = default;
};

} // namespace front_end
