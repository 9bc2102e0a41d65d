#pragma once

#include "platform/OutputFile.h"

#include <string>
#include <string_view>

/// A file of 8-bit text with this system's line ends, made anew. What cannot be opened or written is silently lost.
class TextOutput {
public:
    explicit TextOutput(const std::wstring& path);

    /// Appends lines that end with "\n".
    void Write(std::string_view lines);

private:
    platform::OutputFile file;
};
