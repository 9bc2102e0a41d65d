#include "controller_cli/LetterEnqueue.h"

#include "controller_cli/LogHint.h"
#include "controller_cli/Problems.h"
#include "platform/NativePath.h"

namespace controller_cli {
namespace {

/// Tells on standard error what has become of requests that made no jobs, and makes the exit code of it.
class Mishaps {
public:
    Mishaps(CommandContext& commandContext, const LetterSession& letterSession, const std::wstring& jobsFileName)
        : context(commandContext), session(letterSession), jobsFile(platform::ToNativeText(jobsFileName)) {}

    void NoteAnswer(std::size_t index, const EnqueueJobsInfo& request, const std::vector<int>& seqIds) {
        for (std::size_t set = 0; set < seqIds.size(); ++set) {
            if (seqIds[set] < 0) {
                NoteRefusal(MemberOf(index) + L".inputFileSets[" + std::to_wstring(set) + L"]", request, set);
            }
        }
    }

    /// An answer without jobs is none: a request without input sets has no other.
    void NoteNoAnswer(std::size_t index, const EnqueueJobsInfo& request) {
        if (request.inputFileSets.empty()) {
            NoteRefusal(MemberOf(index), request, 0);
            return;
        }
        exitCode = ExitCode::NoHost;
        Tell(context.texts.Format(L"Errors/RequestNotAnswered", {jobsFile, MemberOf(index)}));
    }

    /// The exit code of all.
    ExitCode Finish() {
        if (count > mostTold) {
            WriteProblem(context, context.texts.Format(L"Refusals/More", {std::to_wstring(count - mostTold)}));
        }
        return exitCode;
    }

private:
    static constexpr std::size_t mostTold = 20;

    static std::wstring MemberOf(std::size_t index) { return L"EnqueueJobs[" + std::to_wstring(index) + L"]"; }

    void NoteRefusal(const std::wstring& member, const EnqueueJobsInfo& request, std::size_t set) {
        if (exitCode == ExitCode::Success) {
            exitCode = ExitCode::JobFailed;
        }
        const std::wstring told = session.RefusalReason(request, set);
        const std::wstring reason = told.empty() ? context.texts.Get(L"Refusals/Unknown") + LogHint(context) : told;
        Tell(context.texts.Format(L"Refusals/Line", {jobsFile, member, reason}));
    }

    void Tell(const std::wstring& text) {
        ++count;
        if (count <= mostTold) {
            WriteProblem(context, text);
        }
    }

    CommandContext& context;
    const LetterSession& session;
    std::wstring jobsFile;
    std::size_t count = 0;
    ExitCode exitCode = ExitCode::Success;
};

} // namespace

ExitCode EnqueueRequests(CommandContext& context, LetterSession& session, const std::wstring& jobsFile,
                         std::vector<EnqueueJobsInfo>& requests, LetterOutput& output) {
    Mishaps mishaps(context, session, jobsFile);
    // A line that is not open yet opens with the first request.
    bool isHostGone = false;
    for (std::size_t index = 0; index < requests.size(); ++index) {
        std::vector<int> seqIds = {-1};
        const bool isAnswered = !isHostGone && session.Presenter().EnqueueJobs(requests[index], seqIds);
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

} // namespace controller_cli
