#include "platform/system/Installation.h"

#include <algorithm>
#include <initializer_list>

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace platform {
namespace {

/// Of the directories, relative to `ownDirectory`, the first that has the file.
std::wstring FirstPlace(const std::wstring& fileName, const std::wstring& ownDirectory,
                        std::initializer_list<const wchar_t*> directories) {
    const auto pathIn = [&](const wchar_t* directory) { return ResolveAgainst(ownDirectory, directory + fileName); };
    const auto* const found =
        std::ranges::find_if(directories, [&](const wchar_t* directory) { return Exists(pathIn(directory)); });
    return pathIn(found == directories.end() ? *directories.begin() : *found);
}

} // namespace

// The directory of the libraries is "bin" on Windows, and "lib" or "lib/x86_64-linux-gnu" on Linux.

std::wstring InstalledProgram(const std::wstring& fileName, const std::wstring& ownDirectory) {
    return FirstPlace(fileName + programExtension, ownDirectory,
                      {L"", L"..\\libexec\\common_controller\\", L"..\\..\\libexec\\common_controller\\",
                       // From a plug-in.
                       L"..\\..\\..\\libexec\\common_controller\\", L"..\\..\\..\\..\\libexec\\common_controller\\"});
}

std::wstring InstalledPlugin(const std::wstring& fileName, const std::wstring& ownDirectory) {
    return FirstPlace(fileName + moduleExtension, ownDirectory,
                      {L"", L"common_controller\\plugins\\", L"..\\lib\\common_controller\\plugins\\"});
}

std::wstring InstalledData(const std::wstring& fileName, const std::wstring& ownDirectory) {
    return FirstPlace(fileName, ownDirectory,
                      {L"..\\share\\common_controller\\", L"..\\..\\share\\common_controller\\"});
}

} // namespace platform
