#pragma once

#include <string>

#include "platform/FileLock.h"

namespace controller_cli {

/// A folder that only this user can read, made for one command and removed with all it holds. What a process that was
/// killed has left of its own is removed by the next that makes one.
class ScratchFolder {
public:
    /// Throws `std::runtime_error` when it cannot be made.
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::wstring& Path() const { return path; }

private:
    void Make();

    std::wstring path;
    /// Tells others that the folder is in use.
    platform::FileLock lock;
};

} // namespace controller_cli
