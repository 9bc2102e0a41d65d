#include <algorithm>
#include <string>
#include <vector>

#include "CommonControllerLib/CLIArgumentParser.h"
#include "controller_cli/command_line/MovedOptions.h"
#include "controller_cli/command_line/ShortOptionArguments.h"
#include "controller_cli/command_line/ShortOptionUsage.h"
#include "controller_host/HostOptions.h"
#include "front_end/commands/Command.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "platform/files/NativePath.h"
#include "scenario_runner/RunnerArguments.h"
#include "text/Text.h"

namespace {

using Arguments = std::vector<std::wstring>;

void CheckLetters(const Arguments& arguments) {
    CLIArgumentParser parser;
    const bool isCommand = parser.Parse(arguments);
    const auto type = parser.GetCommandType();
    fuzz::Require(!isCommand || type != CLIArgumentParser::None, "what is parsed is a command");
    fuzz::Require(type == CLIArgumentParser::EnqueueJobs || parser.GetJobFileName().empty(),
                  "only an enqueue names a jobs file");
    const bool takesIds = type == CLIArgumentParser::CancelJobs || type == CLIArgumentParser::CheckJobStatus;
    const Arguments ids = parser.GetIds();
    fuzz::Require(takesIds || ids.empty(), "only cancelling and asking name ids");
    for (const std::wstring& id : ids) {
        fuzz::Require(!id.empty() && id.find(L',') == std::wstring::npos, "an id is what stands between commas");
    }
}

/// Arguments that the parser would ignore are reported as usage errors.
void CheckUsage(const Arguments& arguments) {
    try {
        front_end::RequireShortOptionUsage(arguments);
    } catch (const front_end::UsageProblem& problem) {
        fuzz::Require(problem.textKey.starts_with(L"Usage/"), "a problem has its text");
    }
}

/// A path that begins with a slash is accepted as a path wherever one is allowed.
void CheckSlashPath(const std::wstring& rest) {
    const std::wstring path = L"/home/" + rest;
    CLIArgumentParser parser;
    const bool isCommand = parser.Parse(front_end::PrepareShortOptionArguments({L"-l", path, L"-o", path, path}, true));
    fuzz::Require(isCommand && parser.GetCommandType() == CLIArgumentParser::EnqueueJobs, "a path is a jobs file");
    fuzz::Require(parser.GetJobFileName() == path && parser.GetLogFileName() == path &&
                      parser.GetOutputFileName() == path,
                  "a path is taken as it was typed");
}

void CheckMoved(const Arguments& arguments) {
    const auto moved = front_end::FindMovedOption(arguments);
    const bool hasDashes = std::any_of(arguments.begin(), arguments.end(),
                                       [](const std::wstring& argument) { return argument.starts_with(L"--"); });
    fuzz::Require(!moved || hasDashes, "only a long option has moved");
    fuzz::Require(!moved || !moved->replacement.empty(), "what has moved has a replacement");
}

void CheckRunner(const Arguments& arguments) {
    scenario_runner::RunnerArguments parsed;
    std::wstring problem;
    const bool isParsed = scenario_runner::ParseRunnerArguments(arguments, parsed, problem);
    fuzz::Require(isParsed == problem.empty(), "a refusal, and nothing else, says why");
    fuzz::Require(isParsed == platform::IsAbsolute(parsed.workDir), "a runner has its work directory");
}

void CheckHost(const Arguments& arguments) {
    const HostOptions options = ParseHostOptions(arguments);
    fuzz::Require(options.mode == HostOptions::Mode::Wrong || options.problem.empty(), "only a mistake is a problem");
}

} // namespace

/// Parses the lines of the input as arguments of each program.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    const Arguments arguments = fuzz::LinesOf(bytes);
    CheckLetters(arguments);
    CheckLetters(front_end::PrepareShortOptionArguments(arguments, true));
    CheckUsage(front_end::PrepareShortOptionArguments(arguments, true));
    CheckSlashPath(text::FromUtf8(bytes));
    CheckMoved(arguments);
    CheckRunner(arguments);
    CheckHost(arguments);
    return 0;
}
