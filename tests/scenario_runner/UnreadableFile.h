#pragma once

#include <cstdint>
#include <string>

/// While it lives, this process cannot open a file for reading; whoever has it open goes on.
class UnreadableFile {
public:
    explicit UnreadableFile(const std::wstring& filePath);
    ~UnreadableFile();
    UnreadableFile(const UnreadableFile&) = delete;
    UnreadableFile& operator=(const UnreadableFile&) = delete;

private:
    const std::wstring path;
    /// What has to be closed at the end.
    std::uintptr_t held = 0;
};
