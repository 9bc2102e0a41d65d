#pragma once

#include <string>

namespace controller_cli {

/// A folder that only this user can read, made for one command and removed with all it holds.
class ScratchFolder {
public:
    /// Throws `std::runtime_error` when it cannot be made.
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::wstring& Path() const { return path; }

private:
    std::wstring path;
};

} // namespace controller_cli
