#include "controller_cli/ScratchFolder.h"

#include <stdexcept>

#include "companion/ControllerCSWrapper.h"
#include "platform/Directories.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"
#include "platform/Text.h"

namespace controller_cli {
namespace {

constexpr const wchar_t* namePrefix = L"controller_cli-";

std::wstring LockOf(const std::wstring& folder) {
    return folder + L"\\lock";
}

void RemoveIfAbandoned(const std::wstring& folder) {
    platform::FileLock lock;
    // Other users' folders are refused: what they put there is not to be touched.
    if (platform::EnsurePrivateFolder(folder) || lock.Take(LockOf(folder))) {
        return;
    }
    // Held on as long as the system allows, so that nobody takes the folder for his new one.
    (void)platform::RemoveTree(folder);
    lock.Release();
    // What stays is tried again by the next command.
    (void)platform::RemoveTree(folder);
}

void RemoveAbandoned(const std::wstring& parent) {
    std::vector<platform::FolderEntry> entries;
    // Whether the folder can be used at all shows when this one is made.
    (void)platform::ListFolder(parent, entries);
    for (const platform::FolderEntry& entry : entries) {
        if (entry.isFolder && !entry.isLink && entry.name.starts_with(namePrefix)) {
            RemoveIfAbandoned(parent + L"\\" + entry.name);
        }
    }
}

[[noreturn]] void Fail(const std::wstring& path, const platform::Error& error) {
    throw std::runtime_error(platform::ToUtf8(platform::ToNativeText(path) + L": " + error.Text()));
}

} // namespace

ScratchFolder::ScratchFolder() {
    RemoveAbandoned(platform::TemporaryFolder());
    Make();
}

ScratchFolder::~ScratchFolder() {
    lock.Release();
    // What stays is removed by the next command.
    (void)platform::RemoveTree(path);
}

/// A folder that is not locked yet may be taken for an abandoned one and removed: then another is made.
void ScratchFolder::Make() {
    constexpr int attempts = 5;
    platform::Error error;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        path = platform::TemporaryFolder() + L"\\" + namePrefix + ControllerCSWrapper::CreateGuid();
        error = platform::EnsurePrivateFolder(path);
        if (!error) {
            error = lock.Take(LockOf(path));
        }
        if (!error && platform::Exists(LockOf(path))) {
            return;
        }
    }
    Fail(path, error);
}

} // namespace controller_cli
