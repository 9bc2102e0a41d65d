#pragma once

#include "CommonControllerLib/Export.h"
#include "platform/files/File.h"

#include <string>
#include <string_view>

/// A file of 8-bit text with this system's line ends, made anew. What is written is in the file at once, whatever
/// becomes of this process. One thread at a time.
class CONTROLLER_API TextOutput {
public:
    platform::Error Open(const std::wstring& path);

    /// Appends lines that end with "\n".
    platform::Error Write(std::string_view lines);

    /// The same lines as a text file of this system has them.
    static std::string WithLineEndsOfSystem(std::string_view lines);

private:
    platform::File file;
};
