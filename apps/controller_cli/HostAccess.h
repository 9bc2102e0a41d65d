#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "formats/HostLock.h"

class EventTransmitter;
class EventTransmitterExtension;

namespace controller_cli {

/// What became of the wish that a host ends.
enum class HostEnd : std::int32_t {
    Ended,
    /// It was asked to, and has not ended in time.
    StillRunning,
    /// No way of asking it is left.
    CannotBeAsked
};

/// How the host is reached, and started where none runs.
class HostAccess {
public:
    /// The module through which front ends and the host exchange events, and this end of the line.
    virtual const std::wstring& TransmitterModule() const = 0;
    virtual const std::wstring& TransmitterId() const = 0;

    /// This end of the line, the same object every time; whether a host is there, its extension says. Null when the
    /// module cannot be used. The module owns it.
    virtual EventTransmitter* Transmitter() = 0;

    /// Why there is no transmitter, as the end of a sentence about the module.
    virtual std::wstring TransmitterProblem() = 0;

    /// What the transmitter can do beyond its two operations; null when the module has none.
    virtual EventTransmitterExtension* Extension() = 0;

    /// True when some process is, or is becoming, the host, whether it can be reached already or not.
    virtual bool IsHostThere() = 0;

    /// Starts a host of its own process, and returns once it can be reached. One that was running or starting already
    /// is as good. What kept it from starting; empty when nothing did. `warnings`: the lines in which the host that was
    /// started names what jobs would fail for; empty where one was there already.
    virtual std::wstring StartHost(std::wstring& warnings) = 0;

    /// Runs a host in the foreground and returns its exit code when it has ended. Where it cannot be started, `problem`
    /// says why.
    virtual std::int32_t RunHost(std::wstring& problem) = 0;

    /// The host of the settings' job list where it listens at another place than this end of the line looks at:
    /// "process 4711, since ..., at ...". Empty when there is none, and while a host has not said where it listens.
    virtual std::wstring HostElsewhere() = 0;

    /// Where this end of the line looks for a host, as the module says; empty when it does not.
    virtual std::wstring Place() = 0;

    /// Asks that host to end in the ways that do without a connection here, and waits for its end up to `patience`.
    virtual HostEnd EndRunningHost(std::chrono::milliseconds patience) = 0;

    /// The hosts that run and were started with the settings file in use, whatever that file says now.
    virtual std::vector<host_lock::Holder> HostsOfSettingsFile() = 0;

    /// Asks one of these to end, and waits for its end up to `patience`.
    virtual HostEnd EndHostOfSettingsFile(const host_lock::Holder& holder, std::chrono::milliseconds patience) = 0;

protected:
    HostAccess() = default;
    HostAccess(const HostAccess&) = default;
    HostAccess& operator=(const HostAccess&) = default;
    ~HostAccess() = default;
};

} // namespace controller_cli
