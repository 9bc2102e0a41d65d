#include "front_end/commands/Commands.h"

#include "front_end/commands/FileRoles.h"
#include "front_end/connection/HostSession.h"
#include "front_end/output/DisplayText.h"
#include "front_end/output/JsonOutput.h"

namespace front_end::commands {
namespace {

/// "  size (integer) = 640 [320 | 640]"
std::wstring ParameterLine(const ScenarioParameter& parameter) {
    std::wstring line = L"  " + parameter.name;
    if (!parameter.type.empty()) {
        line += L" (" + parameter.type + L")";
    }
    line += L" = " + parameter.defaultValue;
    std::wstring allowed;
    for (const std::wstring& value : parameter.allowedValues) {
        allowed += (allowed.empty() ? L"" : L" | ") + value;
    }
    return OneLine(allowed.empty() ? line : line + L" [" + allowed + L"]") + L"\n";
}

std::wstring SetText(const ScenarioParameterSetInfo& set) {
    std::wstring heading = set.displayName.empty() ? set.id : set.id + L": " + set.displayName;
    if (!set.description.empty()) {
        heading += L" (" + set.description + L")";
    }
    std::wstring text = OneLine(heading) + L"\n";
    for (const ScenarioParameter& parameter : set.parameters) {
        text += ParameterLine(parameter);
    }
    return text;
}

} // namespace

ExitCode ParameterSets(CommandContext& context, const Command& command) {
    HostSession session(context, StartOf(command));
    const std::vector<ScenarioParameterSetInfo> sets = session.FetchParameterSets(ScenarioName(command.ids.front()));
    if (command.asJson) {
        context.console.Write(ParameterSetsJson(sets));
    } else if (sets.empty()) {
        context.console.Write(context.texts.Get(L"Outcome/NoParameterSets") + L"\n");
    }
    for (std::size_t i = 0; i < sets.size() && !command.asJson; ++i) {
        context.console.Write(SetText(sets[i]));
    }
    return ExitCode::Success;
}

} // namespace front_end::commands
