#include "platform/files/FileSystem.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

#include "platform/files/File.h"
#include "platform/files/NativePath.h"
#include "platform/system/Sleep.h"

namespace platform {

bool HasExtension(const std::wstring& name, const std::wstring& extension) {
    return name.size() >= extension.size() && SameName(name.substr(name.size() - extension.size()), extension);
}

Error ReadFile(const std::wstring& path, std::size_t limit, std::string& bytes) {
    File file;
    std::uint64_t size = 0;
    if (const Error result = file.OpenForReading(path, &size); !result) {
        return result;
    }
    if (size > limit) {
        return {ErrorKind::TooLarge, 0};
    }
    // The size is only a first estimate: a file can grow while it is read, and special files report 0. A read that
    // stops exactly there has found the end.
    std::string content(size + 1, '\0');
    std::size_t length = 0;
    for (std::size_t count = 1; count != 0 && (length == 0 || length != size); length += count) {
        if (length > limit) {
            return {ErrorKind::TooLarge, 0};
        }
        content.resize(length == content.size() ? length * 2 : content.size());
        if (const Error result = file.Read(content.data() + length, content.size() - length, count); !result) {
            return result;
        }
    }
    content.resize(length);
    bytes.swap(content);
    return {};
}

Error ReadFileRetrying(const std::wstring& path, std::size_t limit, std::string& bytes) {
    constexpr int retries = 200;
    constexpr std::chrono::milliseconds pause{1};
    Error result = ReadFile(path, limit, bytes);
    for (int retry = 0; retry < retries && result.kind == ErrorKind::InUse; ++retry) {
        SleepFor(pause);
        result = ReadFile(path, limit, bytes);
    }
    return result;
}

Error CreateEmptyFile(const std::wstring& path) {
    const Error result = File().OpenForAppending(path, true, AppendTo::RegularFile);
    if (result.kind != ErrorKind::NotSupported) {
        return result;
    }
    const Error removal = RemoveFile(path);
    return removal ? File().OpenForAppending(path, true, AppendTo::RegularFile) : removal;
}

Error CreateEmptyFileIn(const std::wstring& directory, const std::wstring& name) {
    return IsLink(directory) ? Error{ErrorKind::NotSupported, 0} : CreateEmptyFile(ResolveAgainst(directory, name));
}

Error ReadFileEnd(const std::wstring& path, std::size_t length, std::string& bytes) {
    File file;
    std::uint64_t size = 0;
    if (const Error result = file.OpenForReading(path, &size); !result) {
        return result;
    }
    const std::uint64_t begin = size - std::min<std::uint64_t>(size, length);
    std::string content(size - begin, '\0');
    std::size_t done = 0;
    for (std::size_t count = 1; count != 0 && done < content.size(); done += count) {
        if (const Error result = file.ReadAt(begin + done, content.data() + done, content.size() - done, count);
            !result) {
            return result;
        }
    }
    content.resize(done);
    bytes.swap(content);
    return {};
}

Error ReadFileInBlocks(const std::wstring& path, const std::function<Reading(std::string_view block)>& visit) {
    constexpr std::size_t blockSize = std::size_t{1} << 20;
    const auto before = StampOf(path);
    File file;
    std::uint64_t size = 0;
    if (const Error result = file.OpenForReading(path, &size); !result) {
        return result;
    }
    std::string block(static_cast<std::size_t>(std::min<std::uint64_t>(size + 1, blockSize)), '\0');
    std::uint64_t done = 0;
    // A file may grow faster than it is read.
    for (std::size_t count = 1; count != 0 && done <= size; done += count) {
        if (const Error result = file.Read(block.data(), block.size(), count); !result) {
            return result;
        }
        if (count != 0 && visit({block.data(), count}) == Reading::Stop) {
            return {};
        }
    }
    return done == size && StampOf(path) == before ? Error{} : Error{ErrorKind::InUse, 0};
}

} // namespace platform
