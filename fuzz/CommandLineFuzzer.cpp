#include <algorithm>
#include <string>
#include <vector>

#include "CommonControllerLib/CLIArgumentParser.h"
#include "controller_cli/command_line/LongOptions.h"
#include "controller_cli/command_line/ShortOptionArguments.h"
#include "controller_cli/command_line/ShortOptionUsage.h"
#include "controller_host/HostOptions.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "platform/files/NativePath.h"
#include "scenario_runner/RunnerArguments.h"
#include "text/Text.h"

namespace {

using Arguments = std::vector<std::wstring>;

/// The lines of the input, as arguments.
Arguments LinesOf(std::string_view bytes) {
    Arguments lines;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        lines.push_back(text::FromUtf8(bytes.substr(0, end)));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return lines;
}

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

void CheckLong(const Arguments& arguments) {
    try {
        const front_end::Command command = front_end::ParseLongCommand(arguments);
        fuzz::Require(std::find(command.ids.begin(), command.ids.end(), std::wstring()) == command.ids.end(),
                      "an id is not empty");
        fuzz::Require((command.kind == front_end::CommandKind::Run) == !command.inputs.empty(),
                      "a run, and nothing else, has inputs");
    } catch (const front_end::UsageProblem& problem) {
        fuzz::Require(problem.textKey.starts_with(L"Usage/"), "a problem has its text");
    }
}

/// True for a text that the command line passes on unchanged: not an option, and representable in UTF-8.
bool IsPlainValue(const std::wstring& text) {
    return !text.empty() && text[0] != L'-' && text::FromUtf8(text::ToUtf8(text)) == text &&
           text.find(L'\0') == std::wstring::npos;
}

void CheckRun(fuzz::ByteSource& source) {
    front_end::Command expected;
    expected.kind = front_end::CommandKind::Run;
    expected.scenario = source.Text();
    expected.inputs = source.Texts();
    expected.outputFolder = source.Text();
    expected.asJson = source.Flag();
    const bool arePlain = std::all_of(expected.inputs.begin(), expected.inputs.end(), IsPlainValue);
    if (!arePlain || expected.inputs.empty() || !IsPlainValue(expected.scenario) ||
        !IsPlainValue(expected.outputFolder)) {
        return;
    }
    Arguments arguments = {L"--run", expected.scenario};
    arguments.insert(arguments.end(), expected.inputs.begin(), expected.inputs.end());
    arguments.insert(arguments.end(), {L"--output", expected.outputFolder});
    if (expected.asJson) {
        arguments.push_back(L"--json");
    }
    fuzz::Require(front_end::ParseLongCommand(arguments) == expected, "a run is read as it was typed");
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
    const Arguments arguments = LinesOf(bytes);
    CheckLetters(arguments);
    CheckLetters(front_end::PrepareShortOptionArguments(arguments, true));
    CheckUsage(front_end::PrepareShortOptionArguments(arguments, true));
    CheckSlashPath(text::FromUtf8(bytes));
    CheckLong(arguments);
    CheckRunner(arguments);
    CheckHost(arguments);
    fuzz::ByteSource source(bytes);
    CheckRun(source);
    return 0;
}
