#include "platform/files/FileSystem.h"

#include <chrono>
#include <vector>

#include "platform/files/File.h"
#include "platform/files/FileSystemCalls.h"
#include "platform/files/NativePath.h"
#include "platform/files/PathRoot.h"
#include "platform/system/Sleep.h"

namespace platform {
namespace {

/// The folders from `path` upwards that do not exist, the deepest first.
std::vector<std::wstring> MissingFolders(const std::wstring& path) {
    std::vector<std::wstring> missing;
    for (std::wstring folder = WithoutTrailingSeparators(path); !folder.empty() && !Exists(folder);
         folder = ParentFolder(folder)) {
        missing.push_back(folder);
    }
    return missing;
}

using FolderMaker = Error (*)(const std::wstring& path);

Error MakeMissingFolders(const std::wstring& path, FolderMaker makeFolder) {
    const std::vector<std::wstring> missing = MissingFolders(path);
    for (auto folder = missing.rbegin(); folder != missing.rend(); ++folder) {
        const Error error = makeFolder(*folder);
        const bool madeByAnother = error.kind == ErrorKind::AlreadyExists && IsFolder(*folder);
        if (error && !madeByAnother) {
            return error;
        }
    }
    return {};
}

Error CreateFolders(const std::wstring& path, FolderMaker makeFolder) {
    if (NamesNothing(path)) {
        return {ErrorKind::NotFound, 0};
    }
    if (!IsAbsolute(path)) {
        return {ErrorKind::NotAbsolute, 0};
    }
    if (Exists(path)) {
        return {ErrorKind::AlreadyExists, 0};
    }
    // Others may make the parents meanwhile; who makes the folder itself is told apart from who finds it.
    const std::wstring folder = WithoutTrailingSeparators(path);
    const Error error = MakeMissingFolders(ParentFolder(folder), makeFolder);
    return error ? error : makeFolder(folder);
}

Error EnsureFolders(const std::wstring& path, FolderMaker makeFolder) {
    const Error error = CreateFolders(path, makeFolder);
    return error.kind == ErrorKind::AlreadyExists && IsFolder(path) ? Error{} : error;
}

} // namespace

Error MakeMissingPrivateFolders(const std::wstring& path) {
    return MakeMissingFolders(path, MakePrivateFolder);
}

Error CreateFolder(const std::wstring& path) {
    return CreateFolders(path, MakeFolder);
}

Error EnsureFolder(const std::wstring& path) {
    return EnsureFolders(path, MakeFolder);
}

Error EnsurePrivateFolders(const std::wstring& path) {
    return EnsureFolders(path, MakePrivateFolder);
}

Error EnsurePrivateFolder(const std::wstring& path) {
    const Error error = MakePrivateFolder(path);
    const bool isThere = error.kind == ErrorKind::AlreadyExists && IsFolder(path) && !IsLink(path);
    return isThere ? RequireOwnFolder(path) : error;
}

bool HasExtension(const std::wstring& name, const std::wstring& extension) {
    return name.size() >= extension.size() && SameName(name.substr(name.size() - extension.size()), extension);
}

Error ReadFile(const std::wstring& path, std::size_t limit, std::string& bytes) {
    File file;
    if (const Error error = file.OpenForReading(path)) {
        return error;
    }
    if (file.Size() > limit) {
        return {ErrorKind::TooLarge, 0};
    }
    // The size is a first guess only: a file can grow while it is read, and some say 0.
    std::string content(file.Size() + 1, '\0');
    std::size_t length = 0;
    for (std::size_t count = 1; count != 0; length += count) {
        if (length > limit) {
            return {ErrorKind::TooLarge, 0};
        }
        content.resize(length == content.size() ? length * 2 : content.size());
        if (const Error error = file.Read(content.data() + length, content.size() - length, count)) {
            return error;
        }
    }
    content.resize(length);
    bytes.swap(content);
    return {};
}

Error ReadFileRetrying(const std::wstring& path, std::size_t limit, std::string& bytes) {
    constexpr int retries = 200;
    constexpr std::chrono::milliseconds pause{1};
    Error error = ReadFile(path, limit, bytes);
    for (int retry = 0; retry < retries && error.kind == ErrorKind::InUse; ++retry) {
        SleepFor(pause);
        error = ReadFile(path, limit, bytes);
    }
    return error;
}

Error CreateEmptyFile(const std::wstring& path) {
    const Error error = File().OpenForAppending(path, true, AppendTo::RegularFile);
    if (error.kind != ErrorKind::NotSupported) {
        return error;
    }
    const Error removal = RemoveFile(path);
    return removal ? removal : File().OpenForAppending(path, true, AppendTo::RegularFile);
}

Error CreateEmptyFileIn(const std::wstring& folder, const std::wstring& name) {
    return IsLink(folder) ? Error{ErrorKind::NotSupported, 0} : CreateEmptyFile(ResolveAgainst(folder, name));
}

} // namespace platform
