#include "front_end/commands/Commands.h"

#include <limits>
#include <string>

#include "CommonControllerLib/PathFuncs.h"
#include "formats/JobStates.h"
#include "formats/RunProtocol.h"
#include "front_end/commands/JobSelection.h"
#include "front_end/commands/SchedulingOptions.h"
#include "front_end/connection/HostSession.h"
#include "front_end/jobs/JobRow.h"
#include "front_end/output/StateJson.h"
#include "front_end/terminal/TerminalText.h"
#include "platform/files/File.h"
#include "text/CodeUnits.h"
#include "text/Utf8Pieces.h"

namespace front_end::commands {
namespace {

/// Polling interval for a growing file.
constexpr std::chrono::milliseconds lookInterval{250};

/// Empty for a job without a work directory.
std::wstring LogPath(const JobListInfo& job, const std::wstring& name) {
    return job.workDir.empty() ? std::wstring() : PathFuncs::Join(job.workDir, name);
}

/// Reads a job's log from the last position on. If the writer has truncated the file, reads it from the beginning
/// again.
class LogReader {
public:
    LogReader(const JobListInfo& job, bool isJson, const std::wstring& name = run_protocol::logFileName)
        : path(LogPath(job, name)), number(job.seqId), asJson(isJson) {}

    /// Writes the bytes added since the last call; with JSON an incomplete character is kept until its remaining bytes
    /// are there. Returns false if there is no log.
    bool PassOn(Console& console) {
        bool isThere = true;
        for (std::string bytes = ReadBlock(isThere); !bytes.empty(); bytes = ReadBlock(isThere)) {
            Write(bytes, console);
        }
        return isThere;
    }

    /// Writes what is kept, because the log is complete.
    void Finish(Console& console) { WriteJson(pieces.TakeRest(), console); }

private:
    void Write(const std::string& bytes, Console& console) {
        if (asJson) {
            WriteJson(pieces.Take(bytes), console);
        } else {
            WriteShown(console.IsTerminal() ? terminalText.Take(bytes) : bytes, console);
        }
    }

    void WriteJson(const std::u32string& characters, Console& console) const {
        std::wstring part;
        for (const char32_t character : characters) {
            text::AppendWide(part, character);
        }
        if (!part.empty()) {
            console.Write(LogPartJson(number, part));
        }
    }

    static void WriteShown(const std::string& shown, Console& console) {
        if (!shown.empty()) {
            console.WriteBytes(shown);
        }
    }

    /// The file is not held open while the console writes.
    std::string ReadBlock(bool& isThere) {
        platform::File file;
        isThere = !path.empty() && file.OpenForReading(path);
        if (file.Size() < position) {
            position = 0;
        }
        std::string bytes(blockSize, '\0');
        std::size_t count = 0;
        isThere = isThere && file.ReadAt(position, bytes.data(), bytes.size(), count);
        bytes.resize(count);
        position += count;
        return bytes;
    }

    static constexpr std::size_t blockSize = 256 * 1024;

    std::wstring path;
    std::int32_t number;
    bool asJson;
    std::uint64_t position = 0;
    /// A scenario's output may contain data from untrusted input files.
    TerminalText terminalText;
    /// For JSON, which holds whole characters only.
    text::Utf8Pieces pieces;
};

/// Applies the reports of one job.
void Apply(const std::vector<JobStatusInfo>& updates, JobListInfo& job) {
    for (const JobStatusInfo& update : updates) {
        if (update.id == job.id) {
            job.status = update.status;
        }
    }
}

[[noreturn]] void Fail(const CommandContext& context, const wchar_t* textKey, const JobListInfo& job) {
    throw CommandFailure{ExitCode::JobFailed, context.texts.Format(textKey, {std::to_wstring(job.seqId)})};
}

/// Prints what the log has now. Returns false if there is none.
[[nodiscard]] bool Print(LogReader reader, Console& console) {
    const bool isThere = reader.PassOn(console);
    reader.Finish(console);
    return isThere;
}

void PrintAttempt(CommandContext& context, const JobListInfo& job, std::int32_t attempt, bool asJson) {
    if (!Print(LogReader(job, asJson, run_protocol::AttemptLogName(attempt)), context.console)) {
        throw CommandFailure{
            ExitCode::JobFailed,
            context.texts.Format(L"Errors/NoAttemptLog", {std::to_wstring(job.seqId), std::to_wstring(attempt)})};
    }
}

/// Follows the log until the job has ended. A waiting job has no log yet, and may never get one.
void Follow(CommandContext& context, HostSession& session, JobListInfo job, bool asJson) {
    LogReader reader(job, asJson);
    bool hasLog = reader.PassOn(context.console);
    while (!IsOver(job.status)) {
        Apply(session.WaitForUpdates(lookInterval), job);
        hasLog = reader.PassOn(context.console) || hasLog;
    }
    reader.Finish(context.console);
    if (!hasLog) {
        Fail(context, job.status == unlistedStatus ? L"Errors/JobDeleted" : L"Errors/NoLog", job);
    }
}

} // namespace

ExitCode Log(CommandContext& context, const Command& command) {
    const auto attempt = WholeNumberOf(command.attempt, 1, std::numeric_limits<std::int32_t>::max(), L"Usage/Attempt");
    if (attempt && command.follows) {
        throw UsageProblem{L"Usage/IdleOption", L"--follow"};
    }
    HostSession session(context, StartOf(command));
    const std::vector<ListedJob> jobs = JobsOf(context, session, command);
    if (jobs.size() != 1) {
        throw UsageProblem{L"Usage/OneJob", command.ids.front()};
    }
    const JobListInfo& job = jobs.front();
    if (attempt) {
        PrintAttempt(context, job, *attempt, command.asJson);
    } else if (command.follows) {
        Follow(context, session, job, command.asJson);
    } else if (!Print(LogReader(job, command.asJson), context.console)) {
        Fail(context, L"Errors/NoLog", job);
    }
    return ExitCode::Success;
}

} // namespace front_end::commands
