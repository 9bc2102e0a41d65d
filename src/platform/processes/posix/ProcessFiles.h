#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <sys/types.h>

/// The files of /proc that describe processes.
namespace platform {

/// The ids of all processes of this machine.
std::vector<pid_t> ListProcesses();

/// The directory of a process, whether it exists or not.
std::string ProcessDirectory(pid_t process);

/// The first 16 MiB of a file in the directory of a process. Nothing if the file cannot be opened: the process has
/// ended, or is another user's. One call reads all of nearly every file: between two calls the process may become
/// another program, and the rest of its file is then missing.
std::optional<std::string> ReadProcessFile(pid_t process, const char* name);

/// The state of a process, read once. Its fields have the numbers of proc(5), "/proc/pid/stat", from 3 on.
class ProcessStat {
public:
    explicit ProcessStat(pid_t process);

    /// Empty if there is none, as for a process that has ended and was reaped.
    std::string_view Field(std::size_t number) const;
    /// 0 if there is none.
    std::uint64_t Number(std::size_t number) const;
    /// 0 if unknown.
    pid_t Parent() const { return static_cast<pid_t>(Number(4)); }

private:
    std::string text;
};

} // namespace platform
