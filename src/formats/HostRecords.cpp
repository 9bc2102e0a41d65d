#include "formats/HostRecords.h"

#include <utility>

#include "formats/Boundary.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/ReplaceFile.h"
#include "platform/system/Environment.h"

namespace host_records {
namespace {

constexpr wchar_t ending[] = L".json";

/// Returns an empty path if the user has no data directory.
std::wstring Directory() {
    const std::wstring data = platform::UserDataDirectory();
    return data.empty() ? data : data + L"\\" + platform::applicationDirectoryName + L"\\hosts";
}

/// The file name is the process id, which is unique among the running hosts of one user.
std::wstring FileOf(const host_lock::Holder& holder) {
    return Directory() + L"\\" + std::to_wstring(holder.process) + ending;
}

std::vector<std::wstring> Files() {
    std::vector<platform::DirectoryEntry> entries;
    // A directory that cannot be listed counts as empty.
    (void)platform::ListDirectory(Directory(), entries);
    std::vector<std::wstring> files;
    for (const platform::DirectoryEntry& entry : entries) {
        if (!entry.isDirectory && entry.name.ends_with(ending)) {
            files.push_back(Directory() + L"\\" + entry.name);
        }
    }
    return files;
}

void RemoveOfDeadHosts() {
    for (const std::wstring& file : Files()) {
        if (host_lock::ReadHolder(file).process == 0) {
            // A file that remains does no harm: its host is recognized as ended.
            (void)platform::RemoveFile(file);
        }
    }
}

} // namespace

platform::Error Write(const host_lock::Holder& holder) {
    return boundary::Guard("Write", [&]() -> platform::Error {
        if (Directory().empty()) {
            return {};
        }
        if (const platform::Error result = platform::EnsurePrivateDirectories(Directory()); !result) {
            return result;
        }
        RemoveOfDeadHosts();
        return platform::ReplaceFile(FileOf(holder), host_lock::Serialize(holder), platform::Durability::Unsynced);
    });
}

void Remove(const host_lock::Holder& holder) {
    if (!Directory().empty()) {
        // A file that remains does no harm: the lock decides whether a host runs.
        (void)platform::RemoveFile(FileOf(holder));
    }
}

std::vector<host_lock::Holder> StartedWith(const std::wstring& settingsFile) {
    return boundary::Guard("StartedWith", [&] {
        std::vector<host_lock::Holder> hosts;
        for (const std::wstring& file : Files()) {
            const host_lock::Holder noted = host_lock::ReadHolder(file);
            host_lock::Holder found;
            if (noted.process != 0 && platform::SameName(noted.settingsFile, settingsFile) &&
                host_lock::FindHolder(noted.jobListFile, found) && found.process == noted.process) {
                hosts.push_back(std::move(found));
            }
        }
        return hosts;
    });
}

} // namespace host_records
