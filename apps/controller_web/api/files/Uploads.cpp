#include "controller_web/api/files/Uploads.h"

#include <utility>
#include <vector>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "controller_web/api/Answers.h"
#include "formats/zip/ZipName.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "text/Text.h"

namespace web {
namespace {

constexpr std::size_t longestName = 200;

std::vector<std::wstring> PathsIn(const std::wstring& directory) {
    std::vector<platform::DirectoryEntry> entries;
    std::vector<std::wstring> paths;
    // A directory that does not exist yet has nothing.
    if (!platform::ListDirectory(directory, entries)) {
        return paths;
    }
    for (const platform::DirectoryEntry& entry : entries) {
        if (!entry.isLink) {
            paths.push_back(directory + L"\\" + entry.name);
        }
    }
    return paths;
}

[[noreturn]] void FailStoring(const std::wstring& path, const platform::Error& error) {
    throw ApiError{500, "internal_error",
                   L"The file cannot be stored: " + platform::ToNativeText(path) + L": " + error.Text()};
}

} // namespace

Uploads::Uploads(std::wstring uploadDirectory, const Limits& uploadLimits, std::function<std::int64_t()> clock)
    : directory(std::move(uploadDirectory)), limits(uploadLimits), now(std::move(clock)) {}

Uploads::Stored Uploads::CountAndRemove() const {
    Stored stored;
    const std::int64_t oldest = now() - limits.age;
    for (const std::wstring& place : PathsIn(directory)) {
        for (const std::wstring& file : PathsIn(place)) {
            const auto stamp = platform::StampOf(file);
            if (stamp && platform::LastWriteTime(*stamp) < oldest) {
                // What cannot be removed still counts next time.
                (void)platform::RemoveTree(place);
            } else if (stamp) {
                ++stored.files;
                stored.bytes += stamp->size;
            }
        }
    }
    return stored;
}

std::wstring Uploads::Store(const std::string& name, ReceivedFile& file) {
    if (name.size() > longestName || name.starts_with('.') || !zip::IsSafeFileName(name)) {
        throw BadRequest(L"name: expected a file name that both Linux and Windows allow, without directories.");
    }
    const std::lock_guard lock(mutex);
    const Stored stored = CountAndRemove();
    if (stored.files >= limits.files || stored.bytes + file.Size() > limits.bytes) {
        throw ApiError{429, "too_many_requests",
                       L"There are too many uploaded files. Remove those that no job needs from " +
                           platform::ToNativeText(directory) + L"."};
    }
    const std::wstring place = directory + L"\\" + ControllerCSWrapper::CreateGuid();
    if (const platform::Error result = platform::EnsurePrivateDirectories(place); !result) {
        FailStoring(place, result);
    }
    std::wstring path = place + L"\\" + text::FromUtf8(name);
    if (const platform::Error result = file.MoveTo(path); !result) {
        (void)platform::RemoveTree(place);
        FailStoring(path, result);
    }
    return path;
}

} // namespace web
