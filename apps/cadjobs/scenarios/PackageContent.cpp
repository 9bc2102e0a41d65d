#include "cadjobs/scenarios/PackageContent.h"

#include <algorithm>
#include <sstream>

#include "CommonControllerLib/PathFuncs.h"
#include "cadjobs/scenarios/DirectoryFiles.h"
#include "cadjobs/scenarios/ScratchDirectory.h"
#include "formats/ScenarioManifest.h"
#include "front_end/commands/CommandFailure.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace front_end {
namespace {

using scenario_package::PackedFile;

constexpr const wchar_t* listName = L"package_files.txt";
constexpr std::size_t largestList = 1 << 20;

PackedFile ListedFile(const CommandContext& context, const std::wstring& directory, const std::string& line) {
    std::istringstream words(line);
    std::string name;
    std::string file;
    words >> name;
    std::getline(words >> std::ws, file);
    file.erase(file.find_last_not_of(" \t\r") + 1);
    if (file.empty()) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Scenario/FileList", {text::FromUtf8(line)})};
    }
    return {name, platform::ResolveAgainst(directory, text::FromUtf8(file))};
}

std::vector<PackedFile> ListedFiles(const CommandContext& context, const std::wstring& directory) {
    std::string list;
    if (const platform::Error result = platform::ReadFile(directory + L"\\" + listName, largestList, list); !result) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Scenario/NotRead", {listName, result.Text()})};
    }
    std::vector<PackedFile> files;
    std::istringstream lines(list);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t begin = line.find_first_not_of(" \t\r");
        if (begin != std::string::npos && line[begin] != '#') {
            files.push_back(ListedFile(context, directory, line));
        }
    }
    return files;
}

std::vector<PackedFile> AllFiles(const CommandContext& context, const std::wstring& directory) {
    std::vector<PackedFile> files;
    for (const std::wstring& file : FilesBelow(context, directory)) {
        if (!scenario_manifest::IsPackage(file)) {
            std::string name = text::ToUtf8(file);
            std::replace(name.begin(), name.end(), '\\', '/');
            files.push_back({name, PathFuncs::Join(directory, file)});
        }
    }
    return files;
}

} // namespace

std::vector<PackedFile> ContentOf(const CommandContext& context, const std::wstring& directory) {
    return platform::Exists(directory + L"\\" + listName) ? ListedFiles(context, directory)
                                                          : AllFiles(context, directory);
}

std::size_t PackDirectory(const CommandContext& context, const std::wstring& directory, const std::wstring& path) {
    const std::vector<PackedFile> files = ContentOf(context, directory);
    const ScratchDirectory scratch;
    const std::wstring trial = scratch / platform::FileName(path);
    scenario_manifest::ScenarioManifest manifest;
    std::wstring problem;
    if (!scenario_package::Pack(files, trial, problem) || !scenario_manifest::ReadFor(trial, manifest, problem) ||
        !scenario_package::Pack(files, path, problem)) {
        throw CommandFailure{ExitCode::JobFailed,
                             context.texts.Format(L"Scenario/NoPackage", {platform::ToNativeText(directory), problem})};
    }
    return files.size();
}

} // namespace front_end
