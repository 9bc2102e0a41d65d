#include "controller_web/api/files/FilesBelow.h"

#include <algorithm>
#include <utility>

#include "platform/files/FileSystem.h"

namespace web {
namespace {

using platform::DirectoryHandle;
using platform::Error;
using platform::ErrorKind;

std::wstring PathIn(const DirectoryHandle& directory, const std::wstring& name) {
    return directory.Path() + L"\\" + name;
}

Error Descend(DirectoryHandle& directory, const std::wstring& name) {
    if (!IsPlainName(name)) {
        return {ErrorKind::NotFound};
    }
    DirectoryHandle below;
    if (const Error result = below.Open(PathIn(directory, name)); !result) {
        return result;
    }
    directory = std::move(below);
    return {};
}

FoundEntry EntryOf(const DirectoryHandle& directory, const platform::DirectoryEntry& listed,
                   const std::wstring& prefix) {
    FoundEntry entry{prefix + listed.name, listed.isDirectory};
    const auto stamp = listed.isDirectory ? std::nullopt : platform::StampOf(PathIn(directory, listed.name));
    if (stamp) {
        entry.size = stamp->size;
        entry.modified = platform::LastWriteTime(*stamp);
    }
    return entry;
}

/// Lists a tree. Directories are listed only if `isDeep`, then without entries of their own.
class Lister {
public:
    Lister(Listing& target, bool listsBelow) : listing(target), isDeep(listsBelow) {}

    Error List(const DirectoryHandle& directory, const std::wstring& prefix, std::size_t depth) {
        std::vector<platform::DirectoryEntry> entries;
        bool isComplete = true;
        if (const Error result = platform::ListDirectory(directory.Path(), entries, &isComplete); !result) {
            return result;
        }
        listing.isComplete = listing.isComplete && isComplete;
        std::sort(entries.begin(), entries.end(),
                  [](const auto& left, const auto& right) { return left.name < right.name; });
        for (const platform::DirectoryEntry& entry : entries) {
            if (!entry.isLink) {
                Add(directory, entry, prefix, depth);
            }
        }
        return {};
    }

private:
    void Add(const DirectoryHandle& directory, const platform::DirectoryEntry& entry, const std::wstring& prefix,
             std::size_t depth) {
        if (listing.entries.size() >= mostListedFiles || (isDeep && depth >= deepestListed)) {
            listing.isComplete = false;
        } else if (!isDeep || !entry.isDirectory) {
            listing.entries.push_back(EntryOf(directory, entry, prefix));
        } else {
            AddBelow(directory, entry, prefix, depth);
        }
    }

    /// A directory that has gone meanwhile, or cannot be read, is left out.
    void AddBelow(const DirectoryHandle& directory, const platform::DirectoryEntry& entry, const std::wstring& prefix,
                  std::size_t depth) {
        DirectoryHandle below;
        if (!below.Open(PathIn(directory, entry.name)) || !List(below, prefix + entry.name + L"/", depth + 1)) {
            listing.isComplete = false;
        }
    }

    Listing& listing;
    bool isDeep;
};

} // namespace

bool IsPlainName(const std::wstring& name) {
    return !name.empty() && name != L"." && name != L".." &&
           name.find_first_of(std::wstring(L"/\\:\0", 4)) == std::wstring::npos;
}

Error OpenDirectoryBelow(const std::wstring& root, const std::vector<std::wstring>& names, DirectoryHandle& directory) {
    DirectoryHandle current;
    Error result = current.Open(root);
    for (auto name = names.begin(); result && name != names.end(); ++name) {
        result = Descend(current, *name);
    }
    if (result) {
        directory = std::move(current);
    }
    return result;
}

Error OpenFileBelow(const std::wstring& root, const std::vector<std::wstring>& names, platform::File& file) {
    if (names.empty() || !IsPlainName(names.back())) {
        return {ErrorKind::NotFound};
    }
    DirectoryHandle directory;
    if (const Error result = OpenDirectoryBelow(root, {names.begin(), names.end() - 1}, directory); !result) {
        return result;
    }
    const std::wstring path = PathIn(directory, names.back());
    if (const Error result = file.OpenForReading(path); !result) {
        return result;
    }
    // After the file was opened: a link that is put there later does not matter.
    return platform::IsLink(path) ? Error{ErrorKind::NotSupported} : Error();
}

Error ListEntries(const DirectoryHandle& directory, Listing& listing) {
    return Lister(listing, false).List(directory, {}, 0);
}

Error ListFilesBelow(const std::wstring& root, Listing& listing) {
    DirectoryHandle directory;
    if (const Error result = directory.Open(root); !result) {
        return result;
    }
    return Lister(listing, true).List(directory, {}, 0);
}

} // namespace web
