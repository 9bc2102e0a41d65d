#pragma once

#include <cstdint>
#include <string>

/// During its lifetime this process cannot open a file for reading; open handles continue to work.
class UnreadableFile {
public:
    explicit UnreadableFile(const std::wstring& filePath);
    ~UnreadableFile();
    UnreadableFile(const UnreadableFile&) = delete;
    UnreadableFile& operator=(const UnreadableFile&) = delete;

private:
    const std::wstring path;
    /// Closed at destruction.
    std::uintptr_t held = 0;
};
