#pragma once

#include "CommonControllerLib/Export.h"

#include <cstdint>
#include <string>
#include <vector>

/// Turns the arguments of a command line into one command, the files that it names, and two flags. Options are "-" or
/// "/" and one lower-case letter, the value attached or in the next argument; a plain argument is a jobs file.
///
///     -c IDS   cancel these jobs            -l FILE  log file          -f  client only
///     -s IDS   status of these jobs         -o FILE  output file       -m  be the host
///     -i FILE  enqueue from this jobs file
///
/// Does no I/O and reports no messages. A value object; one thread at a time.
class CONTROLLER_API CLIArgumentParser {
public:
    enum CommandType : std::int32_t { None = -1, EnqueueJobs = 0, CancelJobs = 1, CheckJobStatus = 2 };

    /// Takes the arguments without the program's own name. True when they hold exactly one command. False for none, and
    /// at the second one, where reading stops; what was set until then stays. Unknown options and empty arguments are
    /// passed over. An option without a value takes a plain argument behind it, `f` and `m` too, which have no use for
    /// it. One pair of quotes around a file name is removed.
    [[nodiscard]] bool Parse(const std::vector<std::wstring>& args);

    /// The command, also the first of two; `None` when there was none.
    CommandType GetCommandType();
    /// Empty unless the command is `EnqueueJobs`.
    std::wstring GetJobFileName() const;
    /// The ids as given, between commas; empty unless the command is `CancelJobs` or `CheckJobStatus`.
    std::vector<std::wstring> GetIds() const;
    /// Whatever the command; the last one given.
    std::wstring GetLogFileName() const;
    std::wstring GetOutputFileName() const;
    bool IsForceClientMode() const;
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
