#include "cadjobs/scenarios/ScenarioCommands.h"

#include <algorithm>
#include <cstddef>

#include "CommonControllerLib/PathFuncs.h"
#include "cadjobs/scenarios/DirectoryFiles.h"
#include "front_end/commands/FileRoles.h"
#include "front_end/output/StateJson.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "platform/files/ReplaceFile.h"
#include "services/Settings.h"
#include "text/Text.h"

namespace front_end::commands {
namespace {

constexpr std::size_t longestName = 100;
constexpr std::size_t largestTemplateFile = 1 << 20;
constexpr std::string_view placeholder = "@NAME@";

/// A name that is a file name on each system, a text in JSON and a name for CMake.
bool IsName(const std::wstring& name) {
    const auto isAllowed = [](wchar_t character) {
        return (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z') ||
               (character >= L'0' && character <= L'9') || character == L'_' || character == L'-';
    };
    return !name.empty() && name.size() <= longestName && name.front() != L'-' &&
           std::all_of(name.begin(), name.end(), isAllowed);
}

std::wstring TemplateDirectory(const std::wstring& language) {
    if (language != L"ruby" && language != L"python" && language != L"native") {
        throw UsageProblem{L"Usage/Language", language};
    }
    return platform::ResolveAgainst(settings::Current()->scenarioApiDirectory, L"templates\\" + language);
}

std::string Named(std::string content, const std::string& name) {
    for (std::size_t at = content.find(placeholder); at != std::string::npos; at = content.find(placeholder, at)) {
        content.replace(at, placeholder.size(), name);
        at += name.size();
    }
    return content;
}

platform::Error CopyNamed(const std::wstring& from, const std::wstring& to, const std::string& name) {
    std::string content;
    const platform::Error result = platform::ReadFile(from, largestTemplateFile, content);
    return result ? platform::ReplaceFile(to, Named(std::move(content), name)) : result;
}

[[noreturn]] void Fail(const CommandContext& context, const std::wstring& path, const platform::Error& error) {
    throw CommandFailure{ExitCode::Usage,
                         context.texts.Format(L"Scenario/NotMade", {platform::ToNativeText(path), error.Text()})};
}

/// Removes a directory that is not complete.
void Fill(const CommandContext& context, const std::wstring& from, const std::wstring& directory,
          const std::wstring& name) {
    for (const std::wstring& file : FilesBelow(context, from)) {
        if (const platform::Error result =
                CopyNamed(PathFuncs::Join(from, file), PathFuncs::Join(directory, file), text::ToUtf8(name));
            !result) {
            (void)platform::RemoveTree(directory);
            Fail(context, file, result);
        }
    }
}

} // namespace

ExitCode NewScenario(CommandContext& context, const Command& command) {
    const std::wstring& name = command.operands.front();
    if (!IsName(name)) {
        throw UsageProblem{L"Usage/ScenarioName", name};
    }
    const std::wstring from = TemplateDirectory(command.language.empty() ? L"ruby" : command.language);
    const std::wstring directory = platform::ResolveAgainst(AbsolutePath(command.outputFolder), name);
    if (!platform::IsDirectory(from)) {
        throw CommandFailure{ExitCode::Usage,
                             context.texts.Format(L"Scenario/NoTemplate", {platform::ToNativeText(from)})};
    }
    if (const platform::Error result = platform::CreateNewDirectory(directory); !result) {
        Fail(context, directory, result);
    }
    Fill(context, from, directory, name);
    const std::wstring native = platform::ToNativeText(directory);
    context.console.Write(command.asJson ? PathJson(native) : context.texts.Format(L"Scenario/Made", {native}) + L"\n");
    return ExitCode::Success;
}

} // namespace front_end::commands
