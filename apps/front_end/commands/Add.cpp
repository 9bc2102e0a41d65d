#include <optional>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/JobsFile.h"
#include "front_end/commands/Commands.h"
#include "front_end/commands/FileRoles.h"
#include "front_end/commands/Problems.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/JobReports.h"
#include "platform/files/NativePath.h"

namespace front_end::commands {
namespace {

/// As many bytes as a jobs file may have.
constexpr std::size_t largestInput = std::size_t{256} << 20;

[[noreturn]] void FailJobsFile(const CommandContext& context, const std::wstring& problem) {
    throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/JobsFile", {problem})};
}

std::vector<ScheduledRequest> RequestsOf(CommandContext& context, const std::wstring& jobsFile) {
    std::vector<ScheduledRequest> requests;
    std::wstring problem;
    bool isRead = false;
    if (jobsFile == L"-") {
        std::string bytes;
        if (const platform::Error result = context.console.ReadInput(largestInput, bytes); !result) {
            FailJobsFile(context, context.texts.Get(L"Roles/StandardInput") + L": " + result.Text());
        }
        isRead = jobs_file::ReadText(std::move(bytes), context.texts.Get(L"Roles/StandardInput"), requests, problem);
    } else {
        isRead = jobs_file::Read(AbsolutePath(jobsFile), requests, problem);
    }
    if (!isRead) {
        FailJobsFile(context, problem);
    }
    return requests;
}

/// "line 4, column 23: EnqueueJobs[0].inputFileSets[1]"
std::wstring MemberOf(const std::wstring& jobsFile, std::size_t request, std::optional<std::size_t> set) {
    const std::wstring place = jobsFile == L"-" ? L"" : jobs_file::PlaceOf(AbsolutePath(jobsFile), request, set);
    return (place.empty() ? L"" : place + L": ") + L"EnqueueJobs[" + std::to_wstring(request) + L"]" +
           (set ? L".inputFileSets[" + std::to_wstring(*set) + L"]" : L"");
}

/// Sends the requests of one jobs file and tells what became of each input set.
class Enqueuing {
public:
    Enqueuing(CommandContext& commandContext, const Command& jobsCommand)
        : context(commandContext), command(jobsCommand), reports(commandContext, jobsCommand.asJson) {}

    ExitCode Run() {
        std::vector<ScheduledRequest> requests = RequestsOf(context, command.jobsFile);
        HostSession session(context, StartOf(command));
        for (std::size_t index = 0; index < requests.size(); ++index) {
            requests[index].requestId = ControllerCSWrapper::CreateGuid();
            Tell(index, requests[index], session.Enqueue(requests[index]));
        }
        return reports.Finish();
    }

private:
    void Tell(std::size_t index, const ScheduledRequest& request, const JobEnqueueResult& result) {
        if (result.jobIds.empty()) {
            Refuse(index, std::nullopt, {}, result);
        }
        for (std::size_t set = 0; set < result.jobIds.size(); ++set) {
            JobListInfo job;
            job.id = result.jobIds[set].id;
            job.seqId = result.jobIds[set].seqId;
            if (job.id.empty()) {
                Refuse(index, set, job, result);
            } else {
                const std::wstring input = set < request.inputFileSets.size() && !request.inputFileSets[set].empty()
                                               ? request.inputFileSets[set].front()
                                               : std::wstring();
                reports.Done(job, JobStatus::Queued,
                             context.texts.Format(L"Outcome/Added", {std::to_wstring(job.seqId), NativeName(input)}));
            }
        }
    }

    void Refuse(std::size_t index, std::optional<std::size_t> set, JobListInfo job, const JobEnqueueResult& result) {
        const std::wstring reason = RefusalReason(result, set.value_or(0));
        job.seqId = -1;
        reports.NotDone(
            job, JobStatus::Failed,
            context.texts.Format(L"Refusals/Line", {command.jobsFile, MemberOf(command.jobsFile, index, set),
                                                    reason.empty() ? context.texts.Get(L"Refusals/Unknown") : reason}));
    }

    static std::wstring NativeName(const std::wstring& path) { return path.empty() ? path : platform::FileName(path); }

    CommandContext& context;
    const Command& command;
    JobReports reports;
};

} // namespace

ExitCode Add(CommandContext& context, const Command& command) {
    return Enqueuing(context, command).Run();
}

} // namespace front_end::commands
