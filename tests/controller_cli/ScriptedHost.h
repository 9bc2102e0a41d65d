#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "controller_cli/HostAccess.h"
#include "doubles/ScriptedTransmitter.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

/// A host that answers at once, as the test scripts it.
class ScriptedHost final : public controller_cli::HostAccess {
public:
    ScriptedHost();

    // The script
    bool runs = true;
    /// The module has no transmitter.
    bool hasNoTransmitter = false;
    /// The module has only the two basic operations.
    bool hasNoExtension = false;
    /// So often a host that is starting is looked for before it can be reached.
    int looksUntilReady = 0;
    /// Why a host cannot be started; empty: it can.
    std::wstring startProblem;
    /// What a host that is started warns of.
    std::wstring startWarnings;
    std::int32_t foregroundExitCode = 0;
    /// A host that runs somewhere else.
    std::wstring runningHost;
    /// Those that were started with the settings file.
    std::vector<host_lock::Holder> hostsOfSettingsFile;
    controller_cli::HostEnd hostEnd = controller_cli::HostEnd::Ended;
    std::vector<JobListInfo> jobs;
    /// The event and payload that a request is answered with; a request without one is not answered, but for the list
    /// of jobs.
    std::map<std::wstring, ScriptedTransmitter::Event> answers;
    /// What a request is answered with before that.
    std::map<std::wstring, ScriptedTransmitter::Event> firstAnswers;
    /// Called with the name of a request before it is answered: what it makes of the jobs.
    std::function<void(const std::wstring&)> onRequest;
    /// Called with it after it has been answered.
    std::function<void(const std::wstring&)> onAnswered;
    /// Requests that take the host away.
    std::wstring diesAt;

    // The recording
    int startCount = 0;
    int lookCount = 0;
    int foregroundCount = 0;
    int endCount = 0;

    /// Tells of a job's change, which the list of jobs has from then on.
    void Report(const JobStatusInfo& info);
    /// The requests that were sent, with their payloads.
    std::vector<ScriptedTransmitter::Event> Requests() const { return transmitter.sent; }

    const std::wstring& TransmitterModule() const override { return module; }
    const std::wstring& TransmitterId() const override { return id; }
    EventTransmitter* Transmitter() override;
    std::wstring TransmitterProblem() override { return L"cannot be loaded: no such file."; }
    EventTransmitterExtension* Extension() override;
    bool IsHostThere() override;
    std::wstring StartHost(std::wstring& warnings) override;
    std::int32_t RunHost(std::wstring& problem) override;
    std::wstring HostElsewhere() override { return runningHost; }
    std::wstring Place() override { return L"the usual place"; }
    controller_cli::HostEnd EndRunningHost(std::chrono::milliseconds patience) override;
    std::vector<host_lock::Holder> HostsOfSettingsFile() override { return hostsOfSettingsFile; }
    controller_cli::HostEnd EndHostOfSettingsFile(const host_lock::Holder& holder,
                                                  std::chrono::milliseconds patience) override;

    ScriptedTransmitter transmitter;

private:
    void Answer(const ScriptedTransmitter::Event& request);

    std::wstring module;
    std::wstring id;
};
