#include "controller_web/http/OneTimeLinks.h"

#include <charconv>
#include <utility>
#include <vector>

#include "controller_web/http/Secrets.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/ReplaceFile.h"
#include "text/Text.h"

namespace web {
namespace {

constexpr std::size_t largestFile = 64;

} // namespace

OneTimeLinks::OneTimeLinks(std::wstring place, std::function<std::int64_t()> now)
    : directory(std::move(place)), clock(std::move(now)) {}

std::wstring OneTimeLinks::FileOf(std::string_view secret) const {
    return directory + L"\\" + text::FromUtf8(secret);
}

platform::Error OneTimeLinks::Make(std::string& secret) const {
    if (const platform::Error result = platform::EnsurePrivateDirectory(directory); !result) {
        return result;
    }
    RemoveExpired();
    std::string fresh = NewSecret();
    const std::string expiry = std::to_string(clock() + lifeSeconds);
    const platform::Error result = platform::ReplaceFile(FileOf(fresh), expiry, platform::Durability::Unsynced);
    if (result) {
        secret = std::move(fresh);
    }
    return result;
}

bool OneTimeLinks::Redeem(std::string_view secret) const {
    if (!IsSecret(secret)) {
        return false;
    }
    const std::lock_guard lock(redeeming);
    const std::wstring file = FileOf(secret);
    const bool isExpired = IsExpired(file);
    return platform::RemoveFile(file) && !isExpired;
}

/// A file that cannot be read is no link. The clock may have been set back.
bool OneTimeLinks::IsExpired(const std::wstring& file) const {
    std::string text;
    std::int64_t expiry = 0;
    if (!platform::ReadFile(file, largestFile, text)) {
        return true;
    }
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), expiry);
    return error != std::errc() || clock() > expiry || clock() < expiry - lifeSeconds;
}

/// A file with another name is a link that a program is writing, or was writing when it was killed.
bool OneTimeLinks::IsOutdated(const std::wstring& name, const std::wstring& file) const {
    if (IsSecret(text::ToUtf8(name))) {
        return IsExpired(file);
    }
    const auto stamp = platform::StampOf(file);
    return stamp && clock() > platform::LastWriteTime(*stamp) + lifeSeconds;
}

void OneTimeLinks::RemoveExpired() const {
    std::vector<platform::DirectoryEntry> entries;
    // What cannot be listed or removed now is removed later.
    (void)platform::ListDirectory(directory, entries);
    for (const platform::DirectoryEntry& entry : entries) {
        const std::wstring file = directory + L"\\" + entry.name;
        if (!entry.isDirectory && IsOutdated(entry.name, file)) {
            (void)platform::RemoveFile(file);
        }
    }
}

std::string LinkOf(const std::string& pageAddress, const std::string& secret) {
    return pageAddress + "login?token=" + secret;
}

} // namespace web
