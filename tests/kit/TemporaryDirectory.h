#pragma once

#include <string>
#include <string_view>

/// A new empty directory with a unique name for one test, removed with its content at destruction.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    /// Absolute, library text (backslashes), without a trailing separator.
    const std::wstring& Path() const { return path; }
    /// The path of `name` in this directory; creates nothing.
    std::wstring operator/(const std::wstring& name) const;

private:
    std::wstring path;
};

/// Writes exactly `bytes` to a file and creates missing parent directories. Throws `std::runtime_error` on failure.
void WriteTextFile(const std::wstring& path, std::string_view bytes);

/// The whole content of a file. Throws `std::runtime_error` on failure.
std::string ReadTextFile(const std::wstring& path);
