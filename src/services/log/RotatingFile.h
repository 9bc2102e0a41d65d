#pragma once

#include "platform/files/File.h"
#include "platform/files/FileSystem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace log_file {

struct RotationLimits {
    /// A file that would grow beyond this becomes "<path>.1", and a new one is begun.
    std::uint64_t bytes = 10u << 20;
    /// How many files are kept, the current one included.
    int files = 5;
};

/// A file of records whose size is bounded. Several processes may append to the same path; each notices within a second
/// when the file was renamed or removed by another, and one at a time renames, by a lock beside the file
/// ("<path>.lock").
///
/// Nothing is lost while a reader holds a file open: where the system then refuses to rename, the current file goes on
/// growing and the renaming is tried again later. One thread at a time.
class RotatingFile {
public:
    explicit RotatingFile(const RotationLimits& rotationLimits) : limits(rotationLimits) {}

    /// Goes on with the file at `path`, which is opened with the next record; an empty path: records are dropped.
    void SetPath(const std::wstring& path);

    /// Appends one record with one system call, so that it is whole in the file whatever becomes of this process. A
    /// record that cannot be written is dropped; why is said once on standard error, and how many were lost in a line
    /// of its own before the next record that can. Opening the file is tried again each second. `second`: the record's
    /// time.
    void Append(std::string_view record, std::int64_t second);

private:
    void LookAfterFile();
    void OpenFile();
    bool IsTooLargeWith(std::string_view record) const;
    void Rotate(std::string_view record);
    [[nodiscard]] bool ShiftFiles() const;
    std::wstring NameOf(int generation) const;
    void Lose(const platform::Error& error);
    std::string NoteOfLost() const;
    void ComplainOnce(const platform::Error& error);

    const RotationLimits limits;
    std::wstring currentPath;
    platform::File file;
    std::optional<platform::FileIdentity> identity;
    std::uint64_t size = 0;
    /// The size at which to rotate; above the limit after an attempt that failed.
    std::uint64_t rotateAt = 0;
    std::int64_t lastLook = -1;
    bool complained = false;
    std::uint64_t lost = 0;
    /// The file ends in the middle of a record.
    bool isTorn = false;
};

} // namespace log_file
