#include "front_end/commands/Commands.h"

#include <algorithm>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/JobStates.h"
#include "front_end/commands/FileRoles.h"
#include "front_end/commands/InputSets.h"
#include "front_end/commands/Problems.h"
#include "front_end/commands/SchedulingOptions.h"
#include "front_end/commands/WaitForCompletion.h"
#include "front_end/jobs/JobRow.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace front_end::commands {
namespace {

ScheduledRequest RequestOf(const CommandContext& context, const Command& command) {
    ScheduledRequest request{{}, SchedulingOf(context, command)};
    request.requestId = ControllerCSWrapper::CreateGuid();
    request.scenario.id = ScenarioName(command.scenario);
    for (const std::wstring& input : command.inputs) {
        request.inputFileSets.push_back(FilesOfInputSet(input));
    }
    request.outputDir = AbsolutePath(command.outputFolder.empty() ? L"." : command.outputFolder);
    request.runArgument = command.runArgument;
    return request;
}

/// Reports a mistyped file name before anything runs.
void RequireInputs(const CommandContext& context, const EnqueueJobsInfo& request) {
    for (const auto& inputSet : request.inputFileSets) {
        for (const std::wstring& file : inputSet) {
            if (!platform::Exists(file)) {
                throw CommandFailure{ExitCode::Usage,
                                     context.texts.Format(L"Errors/NoSuchInput", {platform::ToNativeText(file)})};
            }
        }
    }
}

/// The known data of a created job that is no longer listed.
ListedJob DeletedJob(const JobIdInfo& id, const EnqueueJobsInfo& request, std::size_t index) {
    ListedJob job;
    job.id = id.id;
    job.seqId = id.seqId;
    job.status = unlistedStatus;
    job.scenario = request.scenario;
    job.inputFiles = request.inputFileSets[index];
    return job;
}

/// The created jobs as the host now lists them.
std::vector<ListedJob> AcceptedJobs(HostSession& session, const EnqueueJobsInfo& request,
                                    const JobEnqueueResult& result) {
    JobsQuery query;
    for (const JobIdInfo& job : result.jobIds) {
        if (!job.id.empty()) {
            query.jobs.push_back(job.id);
        }
    }
    const JobModel board(query.jobs.empty() ? std::vector<ListedJob>() : session.FetchJobs(query));
    std::vector<ListedJob> jobs;
    for (std::size_t i = 0; i < result.jobIds.size() && i < request.inputFileSets.size(); ++i) {
        if (!result.jobIds[i].id.empty()) {
            const JobRow* const view = board.Find(result.jobIds[i].id);
            jobs.push_back(view == nullptr ? DeletedJob(result.jobIds[i], request, i) : view->job);
        }
    }
    return jobs;
}

/// The host's reasons; without a reason, the rejected input set.
void WriteRefusals(CommandContext& context, const JobEnqueueResult& result, const Command& command) {
    const std::vector<std::wstring> reasons = RefusalReasons(result);
    WriteProblems(context, reasons);
    if (!reasons.empty()) {
        return;
    }
    if (result.jobIds.empty()) {
        WriteProblem(context, context.texts.Format(L"Errors/ScenarioRefused", {command.scenario}));
    }
    for (std::size_t i = 0; i < result.jobIds.size() && i < command.inputs.size(); ++i) {
        if (result.jobIds[i].id.empty()) {
            WriteProblem(context, context.texts.Format(L"Errors/InputRefused", {command.inputs[i]}));
        }
    }
}

} // namespace

ExitCode Run(CommandContext& context, const Command& command) {
    const ScheduledRequest request = RequestOf(context, command);
    RequireInputs(context, request);
    HostSession session(context, StartOf(command));
    const JobEnqueueResult result = session.Enqueue(request);
    WriteRefusals(context, result, command);
    const std::vector<ListedJob> jobs = AcceptedJobs(session, request, result);
    const bool isWhole = jobs.size() == command.inputs.size();
    if (jobs.empty() && !command.asJson) {
        return ExitCode::JobFailed;
    }
    const ExitCode outcome = WaitForCompletion(context, session, jobs, command.asJson);
    return isWhole ? outcome : ExitCode::JobFailed;
}

} // namespace front_end::commands
