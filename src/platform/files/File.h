#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/system/Error.h"
#include "platform/system/OwnedHandle.h"

namespace platform {

/// File types accepted when appending. Prevents others from redirecting the writer through a link, or blocking it with
/// a named pipe.
enum class AppendTo {
    Anything,
    /// Follows a link to one of these types.
    FileOrDevice,
    /// Rejects links, too, and files with several hard links.
    RegularFile
};

/// An open file; the other file functions are built on it. Move-only; closes on destruction. Never inherited by child
/// processes. Not thread-safe.
class File {
public:
    /// Opens a regular file; fails with `NotSupported` for any other type. On success, `size`, if given, becomes its
    /// size, without the further system call of `Size`.
    Error OpenForReading(const std::wstring& path, std::uint64_t* size = nullptr);
    /// Opens a file for appending, creating it if it is missing. Others may read, write, rename and delete it at the
    /// same time. Fails with `NotSupported` for a type that `target` does not accept.
    Error OpenForAppending(const std::wstring& path, bool truncate, AppendTo target = AppendTo::Anything);
    /// Creates a file. Fails if the name exists (a link is not followed). Copies the permissions of `model` if that
    /// exists.
    Error CreateNew(const std::wstring& path, const std::wstring& model);

    bool IsOpen() const { return static_cast<bool>(handle); }
    void Close() { handle.Reset(); }

    /// Reads at most `capacity` bytes; `count` is 0 at the end of the file.
    Error Read(char* buffer, std::size_t capacity, std::size_t& count);
    /// Same as `Read`, starting at `offset`.
    Error ReadAt(std::uint64_t offset, char* buffer, std::size_t capacity, std::size_t& count) const;
    /// Writes all bytes.
    Error Write(std::string_view bytes);
    /// Blocks until the content is on the disk.
    Error Flush();
    std::uint64_t Size() const;
    /// Makes the file executable for everyone who may read it. No effect on Windows.
    Error MakeExecutable();

private:
    Error RequireRegular(std::uint64_t* size);

    OwnedFileHandle handle;
};

} // namespace platform
