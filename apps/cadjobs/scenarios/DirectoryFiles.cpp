#include "cadjobs/scenarios/DirectoryFiles.h"

#include <algorithm>

#include "front_end/commands/CommandFailure.h"
#include "platform/files/Directory.h"
#include "platform/files/NativePath.h"

namespace front_end {
namespace {

constexpr int deepest = 32;

bool IsLeftOut(const platform::DirectoryEntry& entry) {
    return entry.isLink || entry.name.starts_with(L".") || entry.name == L"__pycache__";
}

void Collect(const CommandContext& context, const std::wstring& root, const std::wstring& inside, int depth,
             std::vector<std::wstring>& files) {
    const std::wstring directory = root + L"\\" + inside;
    std::vector<platform::DirectoryEntry> entries;
    platform::Error result = platform::ListDirectory(directory, entries);
    if (depth > deepest) {
        result = {platform::ErrorKind::TooLarge};
    }
    if (!result) {
        throw CommandFailure{ExitCode::Usage, context.texts.Format(L"Scenario/NotRead",
                                                                   {platform::ToNativeText(directory), result.Text()})};
    }
    for (const platform::DirectoryEntry& entry : entries) {
        if (IsLeftOut(entry)) {
            continue;
        }
        if (entry.isDirectory) {
            Collect(context, root, inside + entry.name + L"\\", depth + 1, files);
        } else {
            files.push_back(inside + entry.name);
        }
    }
}

} // namespace

std::vector<std::wstring> FilesBelow(const CommandContext& context, const std::wstring& directory) {
    std::vector<std::wstring> files;
    Collect(context, directory, {}, 0, files);
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace front_end
