#pragma once

#include "CommonControllerLib/Export.h"
#include "platform/files/File.h"

#include <string>
#include <string_view>

/// Creates a file of 8-bit text with this system's line ends. Lines are passed to the system immediately, so that they
/// are in the file even if this process is killed. Threads: one at a time.
class CONTROLLER_API TextOutput {
public:
    platform::Error Open(const std::wstring& path);

    /// Appends lines that end with "\n".
    platform::Error Write(std::string_view lines);

    /// Returns the lines with this system's line ends.
    static std::string WithLineEndsOfSystem(std::string_view lines);

private:
    platform::File file;
};
