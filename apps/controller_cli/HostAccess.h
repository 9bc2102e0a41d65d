#pragma once

#include <cstdint>
#include <string>

class EventTransmitter;

namespace controller_cli {

/// How the host is reached, and started where none runs.
class HostAccess {
public:
    /// The module through which front ends and the host exchange events, and this end of the line.
    virtual const std::wstring& TransmitterModule() const = 0;
    virtual const std::wstring& TransmitterId() const = 0;

    /// This end of the line, the same object every time; whether a host is there, its `IsConnected` says. Null when the
    /// module cannot be used. The module owns it.
    virtual EventTransmitter* Transmitter() = 0;

    /// Starts a host of its own process, and returns once it can be reached. One that was running already is as good.
    /// What kept it from starting; empty when nothing did.
    virtual std::wstring StartHost() = 0;

    /// Runs a host in the foreground and returns its exit code when it has ended. Where it cannot be started, `problem`
    /// says why.
    virtual std::int32_t RunHost(std::wstring& problem) = 0;

protected:
    HostAccess() = default;
    HostAccess(const HostAccess&) = default;
    HostAccess& operator=(const HostAccess&) = default;
    ~HostAccess() = default;
};

} // namespace controller_cli
