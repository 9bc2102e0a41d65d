#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/files/File.h"
#include "platform/system/Error.h"

namespace platform {

/// A file that is appended to while others may read, rename or delete it (log files). Move-only; closes on destruction.
/// One thread at a time.
class OutputFile {
public:
    /// Opens `path` for appending, creating it where it is missing; with `truncate` an existing content is dropped.
    /// Parent folders must exist.
    Error Open(const std::wstring& path, bool truncate, AppendTo target = AppendTo::Anything);
    bool IsOpen() const { return file.IsOpen(); }
    void Close();

    /// Appends all bytes.
    Error Write(std::string_view bytes);
    /// Bytes in the file now; 0 when not open.
    std::uint64_t Size() const;

private:
    File file;
};

} // namespace platform
