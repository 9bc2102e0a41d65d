#include "platform/files/Directory.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files/FileSystem.h"
#include "platform/files/posix/SystemPath.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"

namespace platform {
namespace {

struct Range {
    wchar_t first;
    wchar_t last;
    int toUpper;
};

// Ranges of Latin, Greek and Cyrillic letters whose capitals are at a fixed distance.
constexpr Range shiftedRanges[] = {
    {0xE0, 0xF6, -0x20},   {0xF8, 0xFE, -0x20},   {0x3B1, 0x3C1, -0x20},
    {0x3C3, 0x3CB, -0x20}, {0x430, 0x44F, -0x20}, {0x450, 0x45F, -0x50},
};

// In these ranges each capital is followed by its small letter. The capitals are even in some ranges and odd in others.
constexpr Range alternatingEven[] = {{0x100, 0x137, 0}, {0x14A, 0x177, 0}, {0x460, 0x481, 0}, {0x48A, 0x4BF, 0}};
constexpr Range alternatingOdd[] = {{0x139, 0x148, 0}, {0x179, 0x17E, 0}};

template <std::size_t count>
const Range* Find(const Range (&ranges)[count], wchar_t character) {
    const auto* const found = std::find_if(std::begin(ranges), std::end(ranges), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
    return found == std::end(ranges) ? nullptr : found;
}

wchar_t ToUpper(wchar_t character) {
    // Fast path: most names are ASCII, and sorting a directory converts each name many times.
    if (character < 0x80) {
        return character >= L'a' && character <= L'z' ? character - 0x20 : character;
    }
    if (const Range* const range = Find(shiftedRanges, character)) {
        return character + range->toUpper;
    }
    const bool odd = character % 2 != 0;
    const bool small = odd ? Find(alternatingEven, character) != nullptr : Find(alternatingOdd, character) != nullptr;
    return small ? character - 1 : character;
}

/// Compares names case-insensitively, in the order in which Windows lists directories; equal names are compared by code
/// units. Independent of the locale.
bool CaseInsensitiveLess(std::wstring_view left, std::wstring_view right) {
    const std::size_t common = std::min(left.size(), right.size());
    // Names of one directory often begin alike.
    const auto differing =
        std::mismatch(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(common), right.begin());
    for (auto i = static_cast<std::size_t>(differing.first - left.begin()); i < common; ++i) {
        const wchar_t leftUpper = ToUpper(left[i]);
        const wchar_t rightUpper = ToUpper(right[i]);
        if (leftUpper != rightUpper) {
            return leftUpper < rightUpper;
        }
    }
    return left.size() != right.size() ? left.size() < right.size() : left < right;
}

/// A name with a backslash would be split like a path and could lead out of the directory.
bool CanBeCarried(std::string_view name) {
    return name.find('\\') == std::string_view::npos;
}

bool IsEntry(std::string_view name) {
    return name != "." && name != "..";
}

/// Most file systems return the type with the name; only links and unknown types need another call.
void Append(DIR* directory, const dirent& found, std::vector<DirectoryEntry>& entries) {
    DirectoryEntry entry{text::FromUtf8(found.d_name), found.d_type == DT_DIR, found.d_type == DT_LNK};
    struct stat status = {};
    if (found.d_type == DT_UNKNOWN && fstatat(dirfd(directory), found.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
        entry.isLink = S_ISLNK(status.st_mode);
    }
    if ((found.d_type == DT_UNKNOWN || entry.isLink) && fstatat(dirfd(directory), found.d_name, &status, 0) == 0) {
        entry.isDirectory = S_ISDIR(status.st_mode);
    }
    entries.push_back(std::move(entry));
}

} // namespace

Error MakeDirectory(const std::wstring& path) {
    return OutcomeOf(mkdir(SystemPath(path).c_str(), 0777));
}

Error MakePrivateDirectory(const std::wstring& path) {
    return OutcomeOf(mkdir(SystemPath(path).c_str(), 0700));
}

Error RequireOwnDirectory(const std::wstring& path) {
    struct stat status = {};
    const bool isOwn = stat(SystemPath(path).c_str(), &status) == 0 && status.st_uid == geteuid();
    return isOwn ? Error{} : Error{ErrorKind::AccessDenied, 0};
}

Error FlushDirectory(const std::wstring& directory) {
    const std::string path = directory.empty() ? "." : SystemPath(directory);
    const OwnedFileHandle opened = OpenDescriptor(path.c_str(), O_RDONLY | O_DIRECTORY);
    return opened ? OutcomeOf(fsync(DescriptorOf(opened))) : LastError();
}

Error ListDirectory(const std::wstring& directory, std::vector<DirectoryEntry>& entries, bool* isComplete) {
    const DirectoryListing opened = OpenListing(AT_FDCWD, SystemPath(directory).c_str(), O_RDONLY | O_DIRECTORY);
    if (!opened) {
        return LastError();
    }
    const auto before = static_cast<std::ptrdiff_t>(entries.size());
    errno = 0;
    while (const dirent* next = readdir(opened.get())) {
        const bool isListed = CanBeCarried(next->d_name);
        if (isListed && IsEntry(next->d_name)) {
            Append(opened.get(), *next, entries);
        }
        if (!isListed && isComplete != nullptr) {
            *isComplete = false;
        }
        errno = 0;
    }
    if (errno != 0) {
        const Error error = LastError();
        entries.erase(entries.begin() + before, entries.end());
        return error;
    }
    std::sort(entries.begin() + before, entries.end(), [](const DirectoryEntry& left, const DirectoryEntry& right) {
        return CaseInsensitiveLess(left.name, right.name);
    });
    return {};
}

Error DirectoryHandle::Open(const std::wstring& path) {
    directory = OpenDescriptor(SystemPath(path).c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
    if (!directory) {
        const Error error = LastError();
        return IsLink(path) ? Error{ErrorKind::NotSupported, error.systemCode} : error;
    }
    // This path resolves to the open directory itself, not to its name.
    pinnedPath = L"\\proc\\self\\fd\\" + std::to_wstring(DescriptorOf(directory));
    return {};
}

} // namespace platform
