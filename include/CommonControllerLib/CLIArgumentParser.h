#pragma once

#include "CommonControllerLib/Export.h"

#include <cstdint>
#include <string>
#include <vector>

/// Parses command-line arguments into one command, its file names, and two flags. An option is "-" or "/" followed by
/// one lower-case letter; its value is attached or is the next argument. A plain argument is a jobs file.
///
///     -c IDS   cancel these jobs            -l FILE  log file          -f  client only
///     -s IDS   status of these jobs         -o FILE  output file       -m  be the host
///     -i FILE  enqueue from this jobs file
///
/// Does no I/O and logs nothing. Threads: one at a time per object.
class CONTROLLER_API CLIArgumentParser {
public:
    /// What a command line asks for.
    enum CommandType : std::int32_t { None = -1, EnqueueJobs = 0, CancelJobs = 1, CheckJobStatus = 2 };

    /// Parses `args`, which exclude the program's own name. Returns true when they contain exactly one command. Returns
    /// false without a command, and at the second command, where parsing stops and the values set so far remain.
    /// Unknown options and empty arguments are ignored. An option without an attached value consumes a following plain
    /// argument; this includes `f` and `m`, which ignore it. One pair of quotes around a file name is removed.
    [[nodiscard]] bool Parse(const std::vector<std::wstring>& args);

    /// The first command found; `None` if there was none.
    CommandType GetCommandType();
    /// The jobs file; empty unless the command is `EnqueueJobs`.
    std::wstring GetJobFileName() const;
    /// The ids as given, between commas; empty unless the command is `CancelJobs` or `CheckJobStatus`.
    std::vector<std::wstring> GetIds() const;
    /// The last value given, whatever the command; empty if none was given.
    std::wstring GetLogFileName() const;
    /// As `GetLogFileName`.
    std::wstring GetOutputFileName() const;
    /// True if the option `f` was given.
    bool IsForceClientMode() const;
    /// True if the option `m` was given.
    bool IsForceServerMode() const;

private:
    [[nodiscard]] bool ParseOption(const std::wstring& arg, wchar_t& letter, std::wstring& value) const;
    std::vector<std::wstring> ParseIds(const std::wstring& text) const;
    std::wstring StripQuotation(const std::wstring& text) const;
    [[nodiscard]] bool TakePlainArgument(const std::wstring& arg, std::wstring& value) const;
    [[nodiscard]] bool Apply(wchar_t letter, const std::wstring& value);
    [[nodiscard]] bool ApplyCommand(wchar_t letter, const std::wstring& value);

    CommandType commandType = None;
    std::vector<std::wstring> ids;
    std::wstring jobFileName;
    std::wstring logFileName;
    std::wstring outputFileName;
    bool forceClientMode = false;
    bool forceServerMode = false;
};
