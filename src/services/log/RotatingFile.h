#pragma once

#include "platform/files/File.h"
#include "platform/files/FileSystem.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace log_file {

struct RotationLimits {
    /// Units: bytes. A file that would exceed this size is renamed to "<path>.1", and a new one is started.
    std::uint64_t bytes = 10u << 20;
    /// The number of files to keep, including the current one.
    int files = 5;
};

/// A record file of bounded size. Several processes may append to the same path. Each detects within a second that
/// another has renamed or removed the file; a lock file ("<path>.lock") ensures that one process at a time renames.
///
/// No record is lost while a reader holds a file open: if the system refuses to rename the file, the current file
/// continues to grow and the rename is retried later. Threads: one at a time.
class RotatingFile {
public:
    explicit RotatingFile(const RotationLimits& rotationLimits) : limits(rotationLimits) {}

    /// Appends later records to the file at `path`, which is opened with the next record. An empty path drops records.
    void SetPath(const std::wstring& path);

    /// Appends one record with one system call, so that the record is complete even if this process is killed. `second`
    /// is the record's time in seconds. On failure the record is dropped: the reason is written to standard error once,
    /// and the number of lost records is written as a separate line before the next record that succeeds. Opening the
    /// file is retried every second.
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
    /// The size at which to rotate; above the limit after a failed attempt.
    std::uint64_t rotateAt = 0;
    std::int64_t lastLook = -1;
    bool complained = false;
    std::uint64_t lost = 0;
    /// The file ends with an incomplete record.
    bool isTorn = false;
};

} // namespace log_file
