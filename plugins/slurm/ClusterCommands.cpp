#include "slurm/ClusterCommands.h"

#include <sstream>
#include <utility>

#include "platform/processes/OutputPipe.h"
#include "platform/processes/Waiting.h"
#include "slurm/posix/BoundProgram.h"
#include "text/Text.h"

namespace slurm {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

void AddOption(const wchar_t* name, const std::wstring& value, std::vector<std::wstring>& arguments) {
    if (!value.empty()) {
        arguments.push_back(name + value);
    }
}

void AddNumber(const wchar_t* name, std::int64_t number, const wchar_t* unit, std::vector<std::wstring>& arguments) {
    if (number > 0) {
        arguments.push_back(name + std::to_wstring(number) + unit);
    }
}

std::vector<std::wstring> CancelArguments(const std::wstring& name) {
    return {L"--quiet", L"--name=" + name};
}

/// The exit code; nothing if the program does not start, or runs longer than `timeout` and is killed.
std::optional<std::int32_t> RunToEnd(const platform::ProcessStart& start, milliseconds timeout) {
    platform::OwnedHandle process;
    if (!platform::StartProcess(start, process)) {
        return std::nullopt;
    }
    if (!platform::WaitForAny({process.Get()}, timeout)) {
        KillProcess(process.Get());
        return std::nullopt;
    }
    return platform::ExitCode(process.Get());
}

/// Reads until the end of the output; false at the deadline.
bool ReadAll(platform::OutputPipe& pipe, steady_clock::time_point deadline, std::string& all) {
    constexpr std::size_t pieceSize = 65536;
    constexpr std::size_t mostBytes = std::size_t{16} << 20;
    std::string piece;
    do {
        const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
        if (!platform::WaitForAny({pipe.Readable()}, std::max(left, milliseconds(0))) || all.size() > mostBytes) {
            return false;
        }
        pipe.ReadAvailable(pieceSize, piece);
        all += piece;
    } while (!piece.empty());
    return true;
}

} // namespace

std::vector<std::wstring> SrunArguments(const SlurmOptions& options, const std::wstring& name,
                                        const std::wstring& directory, const std::vector<std::wstring>& command) {
    std::vector<std::wstring> arguments = {L"--quiet",    L"--nodes=1",    L"--ntasks=1",
                                           L"--mpi=none", L"--export=ALL", L"--kill-on-bad-exit=1"};
    arguments.push_back(L"--job-name=" + name);
    arguments.push_back(L"--chdir=" + directory);
    AddOption(L"--partition=", options.partition, arguments);
    AddOption(L"--account=", options.account, arguments);
    AddNumber(L"--cpus-per-task=", options.cpus, L"", arguments);
    AddNumber(L"--mem=", options.memoryMegabytes, L"M", arguments);
    AddNumber(L"--time=", options.minutes, L"", arguments);
    arguments.insert(arguments.end(), options.options.begin(), options.options.end());
    arguments.emplace_back(L"--");
    arguments.insert(arguments.end(), command.begin(), command.end());
    return arguments;
}

platform::ProcessStart ClusterCommand(const std::wstring& program, std::vector<std::wstring> arguments) {
    platform::ProcessStart start;
    start.program = program;
    start.searchPath = true;
    start.arguments = std::move(arguments);
    for (std::wstring& variable : SlurmVariables()) {
        start.environment.emplace_back(std::move(variable), std::nullopt);
    }
    return start;
}

bool CancelJobs(const std::wstring& name, milliseconds timeout) {
    return RunToEnd(ClusterCommand(L"scancel", CancelArguments(name)), timeout) == 0;
}

std::optional<std::vector<std::wstring>> ListJobs(milliseconds timeout) {
    const auto deadline = steady_clock::now() + timeout;
    platform::ProcessStart start = ClusterCommand(L"squeue", {L"--me", L"--noheader", L"--format=%j"});
    platform::OutputPipe pipe;
    platform::OwnedHandle process;
    if (!pipe.Open()) {
        return std::nullopt;
    }
    start.output = pipe.WriteEnd();
    if (!platform::StartProcess(start, nullptr, process)) {
        return std::nullopt;
    }
    pipe.CloseWriteEnd();
    std::string all;
    const bool isRead = ReadAll(pipe, deadline, all) && platform::WaitForAny({process.Get()}, timeout);
    if (!isRead || platform::ExitCode(process.Get()) != 0) {
        KillProcess(process.Get());
        return std::nullopt;
    }
    std::vector<std::wstring> names;
    std::istringstream lines(all);
    for (std::string line; lines >> line;) {
        names.push_back(text::FromUtf8(line));
    }
    return names;
}

void RepeatedCancel::Ask() {
    if (platform::IsProcessRunning(process.Get())) {
        return;
    }
    process.Reset();
    // On failure the next request follows in a second.
    (void)platform::StartProcess(ClusterCommand(L"scancel", CancelArguments(name)), process);
}

} // namespace slurm
