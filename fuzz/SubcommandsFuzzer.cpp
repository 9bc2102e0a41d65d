#include <algorithm>
#include <string>
#include <vector>

#include "cadjobs/command_line/Parser.h"
#include "cadjobs/completion/CompletionPoint.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "kit/front_end/BuiltInTexts.h"
#include "text/Text.h"

namespace {

using front_end::Command;
using front_end::CommandKind;
using Arguments = std::vector<std::wstring>;

/// Changing nothing by mistake: without a name or a condition all jobs would be meant.
bool NeedsJobs(CommandKind kind) {
    constexpr CommandKind kinds[] = {CommandKind::Show,   CommandKind::Wait,   CommandKind::Log,
                                     CommandKind::Cancel, CommandKind::Delete, CommandKind::Again,
                                     CommandKind::Edit,   CommandKind::Hold,   CommandKind::Release};
    return std::find(std::begin(kinds), std::end(kinds), kind) != std::end(kinds);
}

bool HasEmpty(const Arguments& names) {
    return std::find(names.begin(), names.end(), std::wstring()) != names.end();
}

void CheckCommand(const Command& command) {
    fuzz::Require(!HasEmpty(command.ids) && !HasEmpty(command.states) && !HasEmpty(command.columns),
                  "a name is not empty");
    fuzz::Require((command.kind == CommandKind::Run) == !command.inputs.empty(), "a run, and nothing else, has inputs");
    fuzz::Require(!NeedsJobs(command.kind) || !command.ids.empty() || command.HasConditions(),
                  "no command is for all jobs unless that is said");
    fuzz::Require(command.kind != CommandKind::ParameterSets || command.ids.size() == 1, "one scenario is named");
}

void CheckLine(const Arguments& arguments) {
    try {
        const front_end::ParsedCommandLine line = front_end::ParseSubcommand(BuiltInTexts(), arguments);
        fuzz::Require((line.command.kind == CommandKind::Help) == !line.help.empty(),
                      "help, and nothing else, is help");
        CheckCommand(line.command);
    } catch (const front_end::UsageProblem& problem) {
        fuzz::Require(problem.textKey.starts_with(L"Usage/") && BuiltInTexts().Get(problem.textKey) != problem.textKey,
                      "a problem has its text");
    }
}

/// True for a text that the command line passes on unchanged: not an option, and representable in UTF-8.
bool IsPlainValue(const std::wstring& text) {
    return !text.empty() && text[0] != L'-' && text::FromUtf8(text::ToUtf8(text)) == text &&
           text.find(L'\0') == std::wstring::npos;
}

void CheckRun(fuzz::ByteSource& source) {
    Command expected{.kind = CommandKind::Run};
    expected.scenario = source.Text();
    expected.inputs = source.Texts();
    expected.outputFolder = source.Text();
    expected.asJson = source.Flag();
    const bool arePlain = std::all_of(expected.inputs.begin(), expected.inputs.end(), IsPlainValue);
    if (!arePlain || expected.inputs.empty() || !IsPlainValue(expected.scenario) ||
        !IsPlainValue(expected.outputFolder)) {
        return;
    }
    Arguments arguments = {L"run", expected.scenario};
    arguments.insert(arguments.end(), expected.inputs.begin(), expected.inputs.end());
    arguments.insert(arguments.end(), {L"--output", expected.outputFolder});
    if (expected.asJson) {
        arguments.push_back(L"--json");
    }
    fuzz::Require(front_end::ParseSubcommand(BuiltInTexts(), arguments).command == expected,
                  "a run is read as it was typed");
}

void CheckCompletion(const Arguments& words) {
    const front_end::CompletionPoint point = front_end::PointIn(words);
    fuzz::Require(words.empty() || words.back() == L"=" || words.back() == point.kept + point.typed,
                  "what is completed is the last word");
}

} // namespace

/// Parses the lines of the input as arguments of `cadjobs`, and completes them.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes = fuzz::BytesOf(data, size);
    const Arguments arguments = fuzz::LinesOf(bytes);
    CheckLine(arguments);
    CheckCompletion(arguments);
    fuzz::ByteSource source(bytes);
    CheckRun(source);
    return 0;
}
