#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// What the tests need of the system beyond what the platform layer offers.

/// True on the system whose rules the Windows rows of a table are for.
bool OnWindows();

/// A symbolic link to a directory or file; false where this system or user cannot make one.
[[nodiscard]] bool MakeLink(const std::wstring& target, const std::wstring& link);

/// Takes away the right to write: the attribute on Windows, the permissions (0555) on Linux.
void MakeReadOnly(const std::wstring& path);

/// The permission bits of a file; nothing on Windows.
std::optional<std::uint32_t> PermissionsOf(const std::wstring& path);
void SetPermissions(const std::wstring& path, std::uint32_t permissions);

/// Lets every user of the machine write a file, or into a directory.
void LetEverybodyWrite(const std::wstring& path);
/// Gives a file or directory to another user; false where that is not possible.
[[nodiscard]] bool GiveAway(const std::wstring& path);

/// Makes an empty file whose name is these bytes; false on Windows, where names are wide.
[[nodiscard]] bool MakeFileOfBytes(const std::wstring& directory, const std::string& name);

/// Makes a named pipe that nobody writes to; false on Windows.
[[nodiscard]] bool MakeNamedPipe(const std::wstring& path);

/// Sets the time zone of this process, and restores the one before at its end.
class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone);
    ~ScopedTimeZone();
    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;
};

/// The process works in a directory while this lives.
class ScopedCurrentDirectory {
public:
    explicit ScopedCurrentDirectory(const std::wstring& directory);
    ~ScopedCurrentDirectory();
    ScopedCurrentDirectory(const ScopedCurrentDirectory&) = delete;
    ScopedCurrentDirectory& operator=(const ScopedCurrentDirectory&) = delete;

private:
    std::wstring previous;
};

/// Lowers the number of files that this process may have open, where the system has such a limit.
class ScopedOpenFileLimit {
public:
    explicit ScopedOpenFileLimit(std::uint64_t limit);
    ~ScopedOpenFileLimit();
    ScopedOpenFileLimit(const ScopedOpenFileLimit&) = delete;
    ScopedOpenFileLimit& operator=(const ScopedOpenFileLimit&) = delete;

private:
    std::uint64_t previous = 0;
};

/// Holds a file open so that on Windows nobody can rename, replace or delete it.
class FileHold {
public:
    explicit FileHold(const std::wstring& path);
    ~FileHold();
    FileHold(const FileHold&) = delete;
    FileHold& operator=(const FileHold&) = delete;

    /// False where a file that is open can be replaced all the same.
    static bool Protects();

private:
    std::intptr_t handle;
};

/// While it lives, standard output goes elsewhere.
class RedirectedOutput {
public:
    /// Into a new file, exactly as it is written.
    static RedirectedOutput ToFile(const std::wstring& path);
    /// To where nothing can be written.
    static RedirectedOutput ToUnwritable();
    /// Into a pipe whose reader has gone.
    static RedirectedOutput ToBrokenPipe();
    ~RedirectedOutput();
    RedirectedOutput(const RedirectedOutput&) = delete;
    RedirectedOutput& operator=(const RedirectedOutput&) = delete;

private:
    explicit RedirectedOutput(std::intptr_t target);

    std::intptr_t previous;
};
