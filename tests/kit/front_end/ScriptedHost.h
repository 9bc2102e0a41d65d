#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "formats/Scheduling.h"
#include "front_end/connection/HostAccess.h"
#include "kit/doubles/ScriptedTransmitter.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// A host that responds at once from a script.
class ScriptedHost final : public front_end::HostAccess {
public:
    ScriptedHost();

    // The script
    bool runs = true;
    /// True: the module has no transmitter.
    bool hasNoTransmitter = false;
    /// True: the module has only the two required operations.
    bool hasNoExtension = false;
    /// The number of checks until a starting host can be reached.
    int looksUntilReady = 0;
    /// Why a host cannot be started; empty if it can.
    std::wstring startProblem;
    /// The warnings of a started host.
    std::wstring startWarnings;
    std::int32_t foregroundExitCode = 0;
    std::wstring hostVersion = L"controller_host " CONTROLLER_VERSION;
    /// A host with another endpoint.
    std::wstring runningHost;
    /// The hosts that were started with the settings file.
    std::vector<host_lock::Holder> hostsOfSettingsFile;
    front_end::HostEnd hostEnd = front_end::HostEnd::Ended;
    std::vector<ListedJob> jobs;
    QueueState queueState;
    /// The event and payload of the response to each request. Other requests get none, except for the list of jobs.
    std::map<std::wstring, ScriptedTransmitter::Event> answers;
    /// Responses that are sent before those in `answers`.
    std::map<std::wstring, ScriptedTransmitter::Event> firstAnswers;
    /// Called with the name of a request before its response; changes the jobs.
    std::function<void(const std::wstring&)> onRequest;
    /// Called with the name of a request after its response.
    std::function<void(const std::wstring&)> onAnswered;
    /// The request at which the host disappears.
    std::wstring diesAt;

    // The recording
    int startCount = 0;
    int lookCount = 0;
    int foregroundCount = 0;
    int endCount = 0;
    std::vector<std::wstring> webArguments;

    /// Broadcasts a change of a job and stores it in the list of jobs.
    void Report(const JobStatusInfo& info);
    /// The sent requests with their payloads.
    std::vector<ScriptedTransmitter::Event> Requests() const { return transmitter.sent; }

    const std::wstring& TransmitterModule() const override { return module; }
    const std::wstring& TransmitterId() const override { return id; }
    EventTransmitter* Transmitter() override;
    std::wstring TransmitterProblem() override { return L"cannot be loaded: no such file."; }
    EventTransmitterExtension* Extension() override;
    bool IsHostThere() override;
    std::optional<host_lock::Holder> RunningHost() override;
    std::wstring HostProgramVersion() override { return hostVersion; }
    [[nodiscard]] bool StartHost(std::wstring& warnings, std::wstring& problem) override;
    [[nodiscard]] std::optional<std::int32_t> RunHost(std::wstring& problem) override;
    [[nodiscard]] std::optional<std::int32_t> RunWebProgram(const std::vector<std::wstring>& arguments,
                                                            std::wstring& problem) override;
    std::wstring HostElsewhere() override { return runningHost; }
    std::wstring Place() override { return L"the usual place"; }
    front_end::HostEnd EndRunningHost(std::chrono::milliseconds timeout) override;
    std::vector<host_lock::Holder> HostsOfSettingsFile() override { return hostsOfSettingsFile; }
    front_end::HostEnd EndHostOfSettingsFile(const host_lock::Holder& holder,
                                             std::chrono::milliseconds timeout) override;

    ScriptedTransmitter transmitter;

private:
    void Answer(const ScriptedTransmitter::Event& request);
    std::optional<std::int32_t> ForegroundExitCode(std::wstring& problem) const;
    std::vector<ListedJob> Queried(const std::wstring& payload) const;

    std::wstring module;
    std::wstring id;
};
