#include "services/Settings.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>

#include "front_end/commands/Commands.h"
#include "front_end/commands/FileRoles.h"
#include "front_end/commands/LanguageChecks.h"
#include "front_end/output/CheckReport.h"
#include "front_end/output/StateJson.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace front_end::commands {
namespace {

/// The same JSON, a member a line.
std::wstring Indented(const std::wstring& json) {
    const std::string utf8 = text::ToUtf8(json);
    rapidjson::StringStream stream(utf8.c_str());
    rapidjson::StringBuffer text;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(text);
    writer.SetIndent(' ', 2);
    writer.SetFormatOptions(rapidjson::kFormatSingleLineArray);
    rapidjson::Reader().Parse(stream, writer);
    return text::FromUtf8(text.GetString());
}

/// The file that is checked; empty: the built-in settings are in force.
std::wstring CheckedFile(const Command& command) {
    if (!command.operands.empty()) {
        return AbsolutePath(command.operands.front());
    }
    const std::wstring file = settings::FileInUse();
    const bool isMissing = !file.empty() && !platform::Exists(file) && settings::Problem().empty();
    return isMissing ? std::wstring() : file;
}

} // namespace

ExitCode SettingsPath(CommandContext& context, const Command& command) {
    const std::wstring file = platform::ToNativeText(settings::FileInUse());
    context.console.Write(command.asJson ? PathJson(file) : file + L"\n");
    return ExitCode::Success;
}

ExitCode ShowSettings(CommandContext& context, const Command& command) {
    if (const std::wstring problem = settings::Problem(); !problem.empty()) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Errors/Settings", {problem})};
    }
    const std::wstring json = settings::Serialize(*settings::Current());
    context.console.Write(command.asJson ? SettingsJson(json) : Indented(json) + L"\n");
    return ExitCode::Success;
}

ExitCode CheckSettings(CommandContext& context, const Command& command) {
    const std::wstring file = CheckedFile(command);
    std::wstring problem;
    std::vector<std::wstring> warnings;
    std::vector<CheckResult> results;
    settings::Settings checked = *settings::Current();
    if (file.empty()) {
        results.push_back({L"settings", true, context.texts.Get(L"Doctor/BuiltInSettings")});
    } else if (!settings::CheckFile(file, checked, problem, warnings)) {
        results.push_back({L"settings", false, problem});
    } else {
        results.push_back({L"settings", true, platform::ToNativeText(file)});
    }
    for (const std::wstring& warning : warnings) {
        results.push_back({L"members", false, warning});
    }
    if (problem.empty()) {
        CheckLanguagesInUse(context, checked, results);
    }
    return ReportChecks(context, results, command.asJson);
}

ExitCode CheckLanguage(CommandContext& context, const Command& command) {
    std::vector<CheckResult> results;
    CheckLanguageFileTexts(context, AbsolutePath(command.operands.front()), results);
    return ReportChecks(context, results, command.asJson);
}

} // namespace front_end::commands
