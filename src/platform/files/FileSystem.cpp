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

/// The missing directories of `path`, deepest first.
std::vector<std::wstring> MissingDirectories(const std::wstring& path) {
    std::vector<std::wstring> missing;
    for (std::wstring directory = WithoutTrailingSeparators(path); !directory.empty() && !Exists(directory);
         directory = ParentDirectory(directory)) {
        missing.push_back(directory);
    }
    return missing;
}

using DirectoryMaker = Error (*)(const std::wstring& path);

Error MakeMissingDirectories(const std::wstring& path, DirectoryMaker makeDirectory) {
    const std::vector<std::wstring> missing = MissingDirectories(path);
    for (auto directory = missing.rbegin(); directory != missing.rend(); ++directory) {
        const Error error = makeDirectory(*directory);
        const bool madeByAnother = error.kind == ErrorKind::AlreadyExists && IsDirectory(*directory);
        if (error && !madeByAnother) {
            return error;
        }
    }
    return {};
}

Error CreateDirectories(const std::wstring& path, DirectoryMaker makeDirectory) {
    if (NamesNothing(path)) {
        return {ErrorKind::NotFound, 0};
    }
    if (!IsAbsolute(path)) {
        return {ErrorKind::NotAbsolute, 0};
    }
    if (Exists(path)) {
        return {ErrorKind::AlreadyExists, 0};
    }
    // Another process may create the parents at the same time. Only the last level reports whether this call created
    // it.
    const std::wstring directory = WithoutTrailingSeparators(path);
    const Error error = MakeMissingDirectories(ParentDirectory(directory), makeDirectory);
    return error ? error : makeDirectory(directory);
}

Error EnsureDirectories(const std::wstring& path, DirectoryMaker makeDirectory) {
    const Error error = CreateDirectories(path, makeDirectory);
    return error.kind == ErrorKind::AlreadyExists && IsDirectory(path) ? Error{} : error;
}

} // namespace

Error MakeMissingPrivateDirectories(const std::wstring& path) {
    return MakeMissingDirectories(path, MakePrivateDirectory);
}

Error CreateNewDirectory(const std::wstring& path) {
    return CreateDirectories(path, MakeDirectory);
}

Error EnsureDirectory(const std::wstring& path) {
    return EnsureDirectories(path, MakeDirectory);
}

Error EnsurePrivateDirectories(const std::wstring& path) {
    return EnsureDirectories(path, MakePrivateDirectory);
}

Error EnsurePrivateDirectory(const std::wstring& path) {
    const Error error = MakePrivateDirectory(path);
    const bool isThere = error.kind == ErrorKind::AlreadyExists && IsDirectory(path) && !IsLink(path);
    return isThere ? RequireOwnDirectory(path) : error;
}

bool HasExtension(const std::wstring& name, const std::wstring& extension) {
    return name.size() >= extension.size() && SameName(name.substr(name.size() - extension.size()), extension);
}

Error ReadFile(const std::wstring& path, std::size_t limit, std::string& bytes) {
    File file;
    if (const Error error = file.OpenForReading(path)) {
        return error;
    }
    const std::uint64_t size = file.Size();
    if (size > limit) {
        return {ErrorKind::TooLarge, 0};
    }
    // The size is only a first estimate: a file can grow while it is read, and special files report 0.
    std::string content(size + 1, '\0');
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

Error CreateEmptyFileIn(const std::wstring& directory, const std::wstring& name) {
    return IsLink(directory) ? Error{ErrorKind::NotSupported, 0} : CreateEmptyFile(ResolveAgainst(directory, name));
}

} // namespace platform
