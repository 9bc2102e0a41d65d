#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "platform/system/Error.h"

namespace platform {

/// File types accepted when appending. Prevents others from redirecting the writer through a link, or blocking it with
/// a named pipe.
enum class AppendTo {
    Anything,
    /// A link is followed to one of these.
    FileOrDevice,
    /// No link either, nor a file that has other names (hard links).
    RegularFile
};

/// An open file: the few calls of the system that everything else about the content of files is made of. Move-only,
/// closes on destruction. Never inherited by child processes. One thread at a time.
class File {
public:
    File() = default;
    ~File() { Close(); }
    File(File&& other) noexcept : handle(std::exchange(other.handle, invalidHandle)) {}
    File& operator=(File&& other) noexcept {
        std::swap(handle, other.handle);
        return *this;
    }

    /// Opens a regular file; anything else is `NotSupported`.
    Error OpenForReading(const std::wstring& path);
    /// Opens a file whose writes all go to its end, creating it where it is missing; others may read, write, rename
    /// and delete it meanwhile. What `target` leaves out is `NotSupported`.
    Error OpenForAppending(const std::wstring& path, bool truncate, AppendTo target = AppendTo::Anything);
    /// Creates a file that must not exist yet (a link of this name is not followed), with the permissions of `model`
    /// when that exists.
    Error CreateNew(const std::wstring& path, const std::wstring& model);

    bool IsOpen() const { return handle != invalidHandle; }
    void Close();

    /// Reads at most `capacity` bytes; a `count` of 0 is the end.
    Error Read(char* buffer, std::size_t capacity, std::size_t& count);
    /// As `Read`, from `offset` on.
    Error ReadAt(std::uint64_t offset, char* buffer, std::size_t capacity, std::size_t& count) const;
    /// Writes all bytes.
    Error Write(std::string_view bytes);
    /// Waits until the content is on the disk.
    Error Flush();
    std::uint64_t Size() const;
    /// Lets everybody who may read the file run it as a program; on Windows nothing has to be done for that.
    Error MakeExecutable();

private:
    static constexpr std::intptr_t invalidHandle = -1;

    Error RequireRegular();

    std::intptr_t handle = invalidHandle;
};

} // namespace platform
