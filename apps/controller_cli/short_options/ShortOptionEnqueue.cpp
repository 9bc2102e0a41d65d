#include "controller_cli/short_options/ShortOptionEnqueue.h"

#include <optional>

#include "formats/JobsFile.h"
#include "front_end/commands/FileRoles.h"
#include "front_end/commands/Problems.h"
#include "front_end/connection/LogHint.h"
#include "platform/files/NativePath.h"

namespace front_end {
namespace {

/// Reports rejected and unanswered requests on standard error, and determines the exit code.
class Mishaps {
public:
    Mishaps(CommandContext& commandContext, const ShortOptionSession& letterSession, const std::wstring& jobsFileName)
        : context(commandContext), session(letterSession), jobsFile(platform::ToNativeText(jobsFileName)) {}

    void NoteAnswer(std::size_t index, const EnqueueJobsInfo& request, const std::vector<int>& seqIds) {
        for (std::size_t set = 0; set < seqIds.size(); ++set) {
            if (seqIds[set] < 0) {
                NoteRefusal(index, set, request);
            }
        }
    }

    /// A request without input sets gets no jobs in its answer, so that a missing answer counts as a rejection.
    void NoteNoAnswer(std::size_t index, const EnqueueJobsInfo& request) {
        if (request.inputFileSets.empty()) {
            NoteRefusal(index, std::nullopt, request);
            return;
        }
        exitCode = ExitCode::NoHost;
        if (IsTold()) {
            WriteProblem(context,
                         context.texts.Format(L"Errors/RequestNotAnswered", {jobsFile, MemberOf(index, std::nullopt)}));
        }
    }

    /// The exit code for all requests.
    ExitCode Finish() {
        if (count > mostTold) {
            WriteProblem(context, context.texts.Format(L"Refusals/More", {std::to_wstring(count - mostTold)}));
        }
        return exitCode;
    }

private:
    static constexpr std::size_t mostTold = 20;

    /// "line 4, column 23: EnqueueJobs[0].inputFileSets[1]"
    std::wstring MemberOf(std::size_t index, std::optional<std::size_t> set) const {
        const std::wstring place = jobs_file::PlaceOf(AbsolutePath(jobsFile), index, set);
        return (place.empty() ? L"" : place + L": ") + L"EnqueueJobs[" + std::to_wstring(index) + L"]" +
               (set ? L".inputFileSets[" + std::to_wstring(*set) + L"]" : L"");
    }

    void NoteRefusal(std::size_t index, std::optional<std::size_t> set, const EnqueueJobsInfo& request) {
        if (exitCode == ExitCode::Success) {
            exitCode = ExitCode::JobFailed;
        }
        if (!IsTold()) {
            return;
        }
        const std::wstring told = session.RefusalReason(request, set.value_or(0));
        const std::wstring reason = told.empty() ? context.texts.Get(L"Refusals/Unknown") + LogHint(context) : told;
        WriteProblem(context, context.texts.Format(L"Refusals/Line", {jobsFile, MemberOf(index, set), reason}));
    }

    /// Counts a problem. Returns false when the limit of reported problems is exceeded.
    bool IsTold() { return ++count <= mostTold; }

    CommandContext& context;
    const ShortOptionSession& session;
    std::wstring jobsFile;
    std::size_t count = 0;
    ExitCode exitCode = ExitCode::Success;
};

} // namespace

ExitCode EnqueueRequests(CommandContext& context, ShortOptionSession& session, const std::wstring& jobsFile,
                         std::vector<ScheduledRequest>& requests, ShortOptionOutput& output) {
    Mishaps mishaps(context, session, jobsFile);
    // The first request opens the connection if it is not open yet.
    bool isHostGone = false;
    for (std::size_t index = 0; index < requests.size(); ++index) {
        std::vector<int> seqIds = {-1};
        const bool isAnswered = !isHostGone && session.Enqueue(requests[index], seqIds);
        isHostGone = !isAnswered && !session.IsConnected();
        output.Write(CLIPresenter::CreateEnqueuedLines(seqIds));
        if (isAnswered) {
            mishaps.NoteAnswer(index, requests[index], seqIds);
        } else {
            mishaps.NoteNoAnswer(index, requests[index]);
        }
    }
    return mishaps.Finish();
}

} // namespace front_end
