#pragma once

#include <string>

namespace front_end {

/// A new directory for temporary files, accessible to this user only, which is removed with its content. Throws
/// `CommandFailure` if it cannot be created.
class ScratchDirectory {
public:
    ScratchDirectory();
    ~ScratchDirectory();
    ScratchDirectory(const ScratchDirectory&) = delete;
    ScratchDirectory& operator=(const ScratchDirectory&) = delete;

    /// The path of `name` in the directory.
    std::wstring operator/(const std::wstring& name) const { return path + L"\\" + name; }

private:
    std::wstring path;
};

} // namespace front_end
