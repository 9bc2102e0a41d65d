#include "kit/front_end/ScriptedHost.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Messages.h"
#include "kit/modules/ModuleFiles.h"

#include <algorithm>

#include <gtest/gtest.h>

ScriptedHost::ScriptedHost() : module(test_modules::ModulePath(L"transmitter_by_address")), id(transmitter.Id()) {
    transmitter.onSend = [this](const ScriptedTransmitter::Event& request) { Answer(request); };
}

EventTransmitter* ScriptedHost::Transmitter() {
    transmitter.isEngineThere = runs;
    return hasNoTransmitter ? nullptr : &transmitter;
}

EventTransmitterExtension* ScriptedHost::Extension() {
    return hasNoExtension ? nullptr : &transmitter;
}

bool ScriptedHost::IsHostThere() {
    const bool isStarting = looksUntilReady > 0;
    if (isStarting && ++lookCount >= looksUntilReady) {
        runs = true;
        transmitter.isEngineThere = true;
    }
    return isStarting || runs;
}

std::optional<host_lock::Holder> ScriptedHost::RunningHost() {
    host_lock::Holder holder;
    holder.process = 4711;
    holder.since = 1772694000;
    holder.place = L"the usual place";
    holder.isReady = true;
    return runs ? std::optional(holder) : std::nullopt;
}

bool ScriptedHost::StartHost(std::wstring& warnings, std::wstring& problem) {
    warnings = startWarnings;
    problem = startProblem;
    ++startCount;
    runs = startProblem.empty();
    transmitter.isEngineThere = runs;
    return runs;
}

std::optional<std::int32_t> ScriptedHost::RunHost(std::wstring& problem) {
    ++foregroundCount;
    return ForegroundExitCode(problem);
}

std::optional<std::int32_t> ScriptedHost::RunWebProgram(const std::vector<std::wstring>& arguments,
                                                        std::wstring& problem) {
    webArguments = arguments;
    return ForegroundExitCode(problem);
}

std::optional<std::int32_t> ScriptedHost::ForegroundExitCode(std::wstring& problem) const {
    problem = startProblem;
    return startProblem.empty() ? std::optional(foregroundExitCode) : std::nullopt;
}

front_end::HostEnd ScriptedHost::EndRunningHost(std::chrono::milliseconds /*timeout*/) {
    ++endCount;
    return hostEnd;
}

front_end::HostEnd ScriptedHost::EndHostOfSettingsFile(const host_lock::Holder& /*holder*/,
                                                       std::chrono::milliseconds timeout) {
    return EndRunningHost(timeout);
}

void ScriptedHost::Report(const JobStatusInfo& info) {
    for (JobListInfo& job : jobs) {
        if (job.id == info.id) {
            job.status = info.status;
            job.progress = info.progress;
            job.outputDir = info.outputDir;
            job.workDir = info.workDir;
            job.startTime = info.startTime;
            job.endTime = info.endTime;
        }
    }
    EXPECT_TRUE(transmitter.Deliver(L"UpdateProgress", messages::Serialize(L"UpdateProgress", std::vector{info})));
}

std::vector<ListedJob> ScriptedHost::Queried(const std::wstring& payload) const {
    JobsQuery query;
    EXPECT_TRUE(messages::Deserialize(payload, query));
    const auto isNamed = [&](const ListedJob& job) {
        return query.jobs.empty() || std::any_of(query.jobs.begin(), query.jobs.end(), [&](const std::wstring& name) {
                   return name == job.id || name == std::to_wstring(job.seqId);
               });
    };
    std::vector<ListedJob> queried;
    for (const ListedJob& job : jobs) {
        const bool hasRoom = query.limit == 0 || queried.size() < static_cast<std::size_t>(query.limit);
        if (isNamed(job) && job.seqId > query.after && hasRoom) {
            queried.push_back(job);
        }
    }
    return queried;
}

void ScriptedHost::Answer(const ScriptedTransmitter::Event& request) {
    if (request.name == diesAt) {
        transmitter.isEngineThere = false;
        return;
    }
    if (onRequest) {
        onRequest(request.name);
    }
    if (const auto first = firstAnswers.find(request.name); first != firstAnswers.end()) {
        EXPECT_TRUE(transmitter.Deliver(first->second.name, first->second.payload));
    }
    const auto answer = answers.find(request.name);
    if (answer != answers.end()) {
        EXPECT_TRUE(transmitter.Deliver(answer->second.name, answer->second.payload));
    } else if (request.name == L"InitJobsRequest") {
        EXPECT_TRUE(transmitter.Deliver(L"InitJobsResponse", messages::Serialize(events::initJobsResponse, jobs)));
    } else if (request.name == L"FetchJobsRequest") {
        EXPECT_TRUE(transmitter.Deliver(L"FetchJobsResponse",
                                        messages::Serialize(events::fetchJobsResponse, Queried(request.payload))));
    } else if (request.name == L"FetchQueueStateRequest") {
        EXPECT_TRUE(
            transmitter.Deliver(L"QueueStateResponse", messages::Serialize(events::queueStateResponse, queueState)));
    }
    if (onAnswered) {
        onAnswered(request.name);
    }
    if (request.name == L"TerminateRequest") {
        transmitter.isEngineThere = false;
    }
}
