#include "platform/files/Directory.h"

#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

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
        const Error result = makeDirectory(*directory);
        const bool madeByAnother = result.kind == ErrorKind::AlreadyExists && IsDirectory(*directory);
        if (!result && !madeByAnother) {
            return result;
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
    const Error result = MakeMissingDirectories(ParentDirectory(directory), makeDirectory);
    return result ? makeDirectory(directory) : result;
}

Error EnsureDirectories(const std::wstring& path, DirectoryMaker makeDirectory) {
    const Error result = CreateDirectories(path, makeDirectory);
    return result.kind == ErrorKind::AlreadyExists && IsDirectory(path) ? Error{} : result;
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
    const Error result = MakePrivateDirectory(path);
    const bool isThere = result.kind == ErrorKind::AlreadyExists && IsDirectory(path) && !IsLink(path);
    return isThere ? RequireOwnDirectory(path) : result;
}

} // namespace platform
