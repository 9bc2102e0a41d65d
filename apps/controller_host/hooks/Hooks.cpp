#include "controller_host/hooks/Hooks.h"

#include "formats/JobStates.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

#include <algorithm>
#include <utility>

namespace {

using Environment = decltype(HookCall::environment);
/// By event.
using Commands = std::vector<std::pair<std::wstring, std::vector<std::wstring>>>;

/// Variables without a value are removed, so that no command sees those of an outer host.
Environment EnvironmentFor(const std::wstring& event) {
    return {{L"CONTROLLER_EVENT", event},
            {L"CONTROLLER_JOB_NUMBER", std::nullopt},
            {L"CONTROLLER_JOB_ID", std::nullopt},
            {L"CONTROLLER_JOB_STATUS", std::nullopt},
            {L"CONTROLLER_JOB_OUTPUT", std::nullopt},
            {L"CONTROLLER_JOB_SCENARIO", std::nullopt}};
}

Environment EnvironmentFor(const std::wstring& event, const JobListInfo& job, JobStatus status) {
    return {{L"CONTROLLER_EVENT", event},
            {L"CONTROLLER_JOB_NUMBER", std::to_wstring(job.seqId)},
            {L"CONTROLLER_JOB_ID", job.id},
            {L"CONTROLLER_JOB_STATUS", text::FromUtf8(JobStatusString(status))},
            {L"CONTROLLER_JOB_OUTPUT", platform::ToNativeText(job.outputDir)},
            {L"CONTROLLER_JOB_SCENARIO", job.scenario.displayName}};
}

HookCall CallOf(const settings::Settings& settings, const std::wstring& event, const std::vector<std::wstring>& command,
                Environment environment) {
    HookCall call;
    call.event = event;
    call.command = command;
    call.directory = platform::ParentDirectory(settings.file);
    call.environment = std::move(environment);
    return call;
}

} // namespace

void Hooks::OnJobsChanged(const std::vector<JobStatusInfo>& changed) {
    for (const JobStatusInfo& job : changed) {
        if (HasEnded(job.status)) {
            wasBusy = true;
            OnJobEnded(job);
        }
    }
}

void Hooks::OnJobEnded(const JobStatusInfo& job) {
    const auto settings = settings::Current();
    Commands commands{{L"jobEnded", settings->hooks.jobEnded}};
    if (job.status == JobStatus::Failed) {
        commands.emplace_back(L"jobFailed", settings->hooks.jobFailed);
    }
    std::erase_if(commands, [](const auto& command) { return command.second.empty(); });
    if (commands.empty()) {
        return;
    }
    for (const JobListInfo& listed : engine.Listed({job.id})) {
        // Another job's number may look like this id.
        for (const auto& [event, command] : listed.id == job.id ? commands : Commands()) {
            HookCall call = CallOf(*settings, event, command, EnvironmentFor(event, listed, job.status));
            call.subject = L"job " + std::to_wstring(listed.seqId);
            run(std::move(call));
        }
    }
}

void Hooks::OnTurnEnded() {
    if (engine.HasJobsLeft()) {
        wasBusy = true;
        return;
    }
    if (!std::exchange(wasBusy, false)) {
        return;
    }
    if (const auto settings = settings::Current(); !settings->hooks.queueEmpty.empty()) {
        run(CallOf(*settings, L"queueEmpty", settings->hooks.queueEmpty, EnvironmentFor(L"queueEmpty")));
    }
}
