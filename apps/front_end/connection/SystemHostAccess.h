#pragma once

#include "formats/HostLock.h"
#include "front_end/connection/HostAccess.h"
#include "platform/processes/Process.h"

#include <string>

namespace front_end {

/// Access to the configured host, whose program is in the same directory as this one.
class SystemHostAccess final : public HostAccess {
public:
    SystemHostAccess();

    const std::wstring& TransmitterModule() const override { return transmitterModule; }
    const std::wstring& TransmitterId() const override { return transmitterId; }
    EventTransmitter* Transmitter() override;
    std::wstring TransmitterProblem() override;
    EventTransmitterExtension* Extension() override;
    bool IsHostThere() override;
    std::optional<host_lock::Holder> RunningHost() override;
    std::wstring HostProgramVersion() override;
    [[nodiscard]] bool StartHost(std::wstring& warnings, std::wstring& problem) override;
    /// Ctrl-C and other stop requests to this program are forwarded to the host as a request.
    [[nodiscard]] std::optional<std::int32_t> RunHost(std::wstring& problem) override;

    [[nodiscard]] std::optional<std::int32_t> RunWebProgram(const std::vector<std::wstring>& arguments,
                                                            std::wstring& problem) override;

    std::wstring HostElsewhere() override;
    std::wstring Place() override;
    /// By a request if it listens under another name; otherwise, on Linux, by SIGTERM.
    HostEnd EndRunningHost(std::chrono::milliseconds timeout) override;
    std::vector<host_lock::Holder> HostsOfSettingsFile() override;
    HostEnd EndHostOfSettingsFile(const host_lock::Holder& holder, std::chrono::milliseconds timeout) override;

private:
    platform::ProcessStart ProcessOf(const std::wstring& programName) const;
    platform::ProcessStart HostProcess() const;
    bool FindHolder(host_lock::Holder& holder) const;
    bool RequestEndOf(const host_lock::Holder& holder) const;

    std::wstring settingsFile;
    std::wstring jobListFile;
    std::wstring transmitterModule;
    std::wstring transmitterId;
};

} // namespace front_end
