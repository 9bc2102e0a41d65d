#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// System functions that tests need beyond the platform layer.

/// True on the system to which the Windows rows of a table apply.
bool OnWindows();

/// Creates a symbolic link to a directory or file; false if this system or user cannot.
[[nodiscard]] bool MakeLink(const std::wstring& target, const std::wstring& link);

/// Removes write permission: the attribute on Windows, mode 0555 on Linux.
void MakeReadOnly(const std::wstring& path);

/// The permission bits of a file; nothing on Windows.
std::optional<std::uint32_t> PermissionsOf(const std::wstring& path);
void SetPermissions(const std::wstring& path, std::uint32_t permissions);

/// Makes a file or directory world-writable.
void LetEverybodyWrite(const std::wstring& path);
/// Changes the owner of a file or directory; false if that is not possible.
[[nodiscard]] bool GiveAway(const std::wstring& path);

/// Creates an empty file with these bytes as name; false on Windows, where names are wide.
[[nodiscard]] bool MakeFileOfBytes(const std::wstring& directory, const std::string& name);

/// Creates a named pipe without a writer; false on Windows.
[[nodiscard]] bool MakeNamedPipe(const std::wstring& path);

/// Sets the time zone of this process, and restores it at destruction.
class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone);
    ~ScopedTimeZone();
    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;
};

/// Changes the current directory of the process during its lifetime.
class ScopedCurrentDirectory {
public:
    explicit ScopedCurrentDirectory(const std::wstring& directory);
    ~ScopedCurrentDirectory();
    ScopedCurrentDirectory(const ScopedCurrentDirectory&) = delete;
    ScopedCurrentDirectory& operator=(const ScopedCurrentDirectory&) = delete;

private:
    std::wstring previous;
};

/// Lowers the limit on open files of this process, if the system has one.
class ScopedOpenFileLimit {
public:
    explicit ScopedOpenFileLimit(std::uint64_t limit);
    ~ScopedOpenFileLimit();
    ScopedOpenFileLimit(const ScopedOpenFileLimit&) = delete;
    ScopedOpenFileLimit& operator=(const ScopedOpenFileLimit&) = delete;

private:
    std::uint64_t previous = 0;
};

/// Holds a file open, so that it cannot be renamed, replaced or deleted on Windows.
class FileHold {
public:
    explicit FileHold(const std::wstring& path);
    ~FileHold();
    FileHold(const FileHold&) = delete;
    FileHold& operator=(const FileHold&) = delete;

    /// False if an open file can be replaced.
    static bool Protects();

private:
    std::intptr_t handle;
};

/// Redirects standard output during its lifetime.
class RedirectedOutput {
public:
    /// To a new file, byte by byte.
    static RedirectedOutput ToFile(const std::wstring& path);
    /// To an unwritable target.
    static RedirectedOutput ToUnwritable();
    /// To a pipe without a reader.
    static RedirectedOutput ToBrokenPipe();
    ~RedirectedOutput();
    RedirectedOutput(const RedirectedOutput&) = delete;
    RedirectedOutput& operator=(const RedirectedOutput&) = delete;

private:
    explicit RedirectedOutput(std::intptr_t target);

    std::intptr_t previous;
};
