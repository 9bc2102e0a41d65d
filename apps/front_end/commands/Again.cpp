#include <cstddef>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/JobStates.h"
#include "front_end/commands/Commands.h"
#include "front_end/commands/JobSelection.h"
#include "front_end/commands/Problems.h"
#include "front_end/connection/HostSession.h"

namespace front_end::commands {
namespace {

/// No id of a job, which is hexadecimal.
constexpr const wchar_t* allFailed = L"failed";

std::vector<ListedJob> Selected(const CommandContext& context, HostSession& session,
                                const std::vector<std::wstring>& names) {
    if (names != std::vector<std::wstring>{allFailed}) {
        return SelectJobs(context, session.FetchJobs({names}), names);
    }
    std::vector<ListedJob> listed = session.FetchJobs();
    std::erase_if(listed, [](const ListedJob& job) { return job.status != JobStatus::Failed; });
    return listed;
}

/// Jobs of one former request need one request.
struct Repetition {
    ScheduledRequest request;
    std::vector<std::int32_t> formerNumbers;
};

bool Continue(const Repetition& repetition, const ScheduledRequest& next) {
    ScheduledRequest request = repetition.request;
    request.inputFileSets = next.inputFileSets;
    return request == next;
}

std::vector<Repetition> RepetitionsOf(const std::vector<ListedJob>& jobs) {
    std::vector<Repetition> repetitions;
    for (const ListedJob& job : jobs) {
        const ScheduledRequest request = RequestToRepeat(job);
        if (repetitions.empty() || !Continue(repetitions.back(), request)) {
            repetitions.push_back({request, {job.seqId}});
        } else {
            repetitions.back().request.inputFileSets.push_back(job.inputFiles);
            repetitions.back().formerNumbers.push_back(job.seqId);
        }
    }
    return repetitions;
}

bool Repeat(CommandContext& context, HostSession& session, Repetition& repetition) {
    repetition.request.requestId = ControllerCSWrapper::CreateGuid();
    const JobEnqueueResult result = session.Enqueue(repetition.request);
    WriteProblems(context, RefusalReasons(result));
    bool isWhole = result.jobIds.size() == repetition.formerNumbers.size();
    for (std::size_t i = 0; i < result.jobIds.size() && i < repetition.formerNumbers.size(); ++i) {
        const std::wstring former = std::to_wstring(repetition.formerNumbers[i]);
        if (result.jobIds[i].id.empty()) {
            isWhole = false;
            WriteProblem(context, context.texts.Format(L"Errors/NotAgain", {former}));
        } else {
            const std::wstring number = std::to_wstring(result.jobIds[i].seqId);
            context.console.Write(context.texts.Format(L"Outcome/Again", {number, former}) + L"\n");
        }
    }
    return isWhole;
}

/// A job that has not ended cannot have its results again.
bool RequireEnded(CommandContext& context, std::vector<ListedJob>& jobs) {
    return std::erase_if(jobs, [&](const ListedJob& job) {
               if (!IsOver(job.status)) {
                   WriteProblem(context, context.texts.Format(L"Errors/NotEnded", {std::to_wstring(job.seqId)}));
               }
               return !IsOver(job.status);
           }) == 0;
}

} // namespace

ExitCode Again(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    std::vector<ListedJob> jobs = Selected(context, session, command.ids);
    bool areAllEnqueued = RequireEnded(context, jobs);
    for (Repetition& repetition : RepetitionsOf(jobs)) {
        areAllEnqueued = Repeat(context, session, repetition) && areAllEnqueued;
    }
    return areAllEnqueued ? ExitCode::Success : ExitCode::JobFailed;
}

} // namespace front_end::commands
