#pragma once

#include "CommonControllerLib/JobStatus.h"
#include "kit/TemporaryDirectory.h"
#include "platform/system/OwnedHandle.h"
#include "system/crash/Fault.h"

#include <optional>
#include <string>

namespace crash {

/// A data directory and the hosts that run in it, one at a time. The scenarios of its jobs leave a sign of life there.
class CrashSite {
public:
    /// `afterRestart`: the value of that setting.
    CrashSite(const std::wstring& endpointName, const std::string& afterRestart);
    /// Ends the remaining host.
    ~CrashSite();
    CrashSite(const CrashSite&) = delete;
    CrashSite& operator=(const CrashSite&) = delete;

    /// Starts a host. True if front ends can reach it, false if it died at its fault before; any other end throws
    /// std::runtime_error.
    [[nodiscard]] bool StartHost();
    void* Host() const { return host.Get(); }
    bool HostLives() const;

    /// The host, or the next one, will die at this fault.
    void Arm(const Fault& fault) const;
    void Disarm() const;
    void KillHost();
    void AwaitHostEnd();

    /// The scenario's path as used by hosts and jobs.
    std::wstring Scenario(const std::wstring& name) const { return directory / (name + L".steps"); }
    /// The status in which a job of this scenario ends if nobody cancels it; nothing if it does not end.
    std::optional<JobStatus> EndOf(const std::wstring& scenarioPath) const;
    std::wstring Input() const { return directory / L"input.txt"; }
    std::wstring Output() const { return directory / L"out"; }
    std::wstring List() const { return directory / L"job_list.json"; }
    std::wstring WorkDirectory() const { return directory / L"work"; }
    std::wstring Lives() const { return directory / L"lives"; }
    const std::wstring& Directory() const { return directory.Path(); }
    /// The last lines of the hosts' log.
    std::string EndOfLog() const;

private:
    void WriteSettings(const std::wstring& endpointName, const std::string& afterRestart) const;
    void WriteScenarios() const;
    std::wstring FaultFile() const { return directory / L"fault"; }

    const TemporaryDirectory directory;
    platform::OwnedHandle host;
};

} // namespace crash
