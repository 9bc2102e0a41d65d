#include "front_end/commands/Commands.h"

#include "front_end/commands/Problems.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/JobTable.h"
#include "front_end/output/JsonOutput.h"
#include "front_end/output/Table.h"
#include "platform/files/NativePath.h"

namespace front_end::commands {
namespace {

/// "stp step"
std::wstring ExtensionsText(const InputFileSpec& input) {
    std::wstring text;
    for (const std::wstring& extension : input.extensions) {
        text += text.empty() ? L"" : L" ";
        text += extension;
    }
    return text;
}

/// "STEP (stp step)"; empty for an input of any type.
std::wstring OneInputText(const InputFileSpec& input) {
    const std::wstring extensions = ExtensionsText(input);
    const bool hasBoth = !input.cadName.empty() && !extensions.empty();
    return hasBoth ? input.cadName + L" (" + extensions + L")" : input.cadName + extensions;
}

std::wstring InputsText(const ScenarioInfo& scenario) {
    std::wstring text;
    for (const InputFileSpec& input : scenario.inputs) {
        const std::wstring shown = OneInputText(input);
        text += text.empty() || shown.empty() ? L"" : L", ";
        text += shown;
    }
    return text;
}

void WriteTable(CommandContext& context, const std::vector<ScenarioInfo>& scenarios) {
    const Texts& texts = context.texts;
    std::vector<std::vector<Cell>> rows;
    rows.reserve(scenarios.size());
    for (const ScenarioInfo& scenario : scenarios) {
        rows.push_back(
            {{scenario.id}, {scenario.displayName}, {InputsText(scenario)}, {platform::ToNativeText(scenario.path)}});
    }
    const auto width =
        context.console.IsTerminal() ? std::optional<std::size_t>(context.console.Width()) : std::nullopt;
    context.console.Write(JoinedLines(TableLines({{texts.Get(L"Table/Id"), ColumnKind::Whole},
                                                  {texts.Get(L"Table/Scenario"), ColumnKind::Flexible},
                                                  {texts.Get(L"Table/Inputs"), ColumnKind::Flexible},
                                                  {texts.Get(L"Table/File"), ColumnKind::Flexible}},
                                                 std::move(rows), {width, context.console.HasColours()})));
}

} // namespace

ExitCode Scenarios(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    const std::vector<ScenarioInfo> scenarios = session.FetchScenarios();
    if (command.asJson) {
        context.console.Write(ScenariosJson(scenarios));
    } else if (scenarios.empty()) {
        context.console.Write(context.texts.Get(L"Outcome/NoScenarios") + L"\n");
    } else {
        WriteTable(context, scenarios);
    }
    const std::vector<std::wstring> problems = session.TakeScenarioProblems();
    WriteProblems(context, problems);
    return problems.empty() ? ExitCode::Success : ExitCode::JobFailed;
}

} // namespace front_end::commands
