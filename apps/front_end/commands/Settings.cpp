#include "services/Settings.h"

#include <map>

#include <rapidjson/prettywriter.h>
#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>

#include "front_end/commands/Commands.h"
#include "front_end/commands/FileRoles.h"
#include "front_end/output/CheckReport.h"
#include "front_end/output/LanguageFile.h"
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

void AddKeys(const CommandContext& context, const wchar_t* textKey, const std::vector<std::wstring>& keys,
             const std::wstring& culture, std::vector<CheckResult>& results) {
    std::wstring names;
    for (const std::wstring& key : keys) {
        names += (names.empty() ? L"" : L", ") + key;
    }
    if (!keys.empty()) {
        results.push_back({culture, false, context.texts.Format(textKey, {std::to_wstring(keys.size()), names})});
    }
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
    if (file.empty()) {
        results.push_back({L"settings", true, context.texts.Get(L"Doctor/BuiltInSettings")});
    } else if (!settings::CheckFile(file, problem, warnings)) {
        results.push_back({L"settings", false, problem});
    } else {
        results.push_back({L"settings", true, platform::ToNativeText(file)});
    }
    for (const std::wstring& warning : warnings) {
        results.push_back({L"members", false, warning});
    }
    return ReportChecks(context, results, command.asJson);
}

ExitCode CheckLanguage(CommandContext& context, const Command& command) {
    const std::wstring file = AbsolutePath(command.operands.front());
    const std::wstring native = platform::ToNativeText(file);
    std::map<std::wstring, LanguageProblems> sections;
    std::wstring problem;
    std::vector<CheckResult> results;
    if (!CheckLanguageFile(file, sections, problem)) {
        results.push_back({L"file", false, context.texts.Format(L"Language/NoFile", {native, problem})});
    }
    for (const auto& [culture, problems] : sections) {
        AddKeys(context, L"Language/Missing", problems.missing, culture, results);
        AddKeys(context, L"Language/Unknown", problems.unknown, culture, results);
        AddKeys(context, L"Language/Differing", problems.differing, culture, results);
    }
    if (results.empty()) {
        results.push_back({L"file", true, native});
    }
    return ReportChecks(context, results, command.asJson);
}

} // namespace front_end::commands
