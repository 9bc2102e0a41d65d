#pragma once

#include "CommonControllerLib/Export.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

/// What the results of a job were made from: "provenance.json" in its output directory. Functions that return false
/// leave their outputs unchanged. Threads: any.
namespace provenance {

inline constexpr wchar_t fileName[] = L"provenance.json";
/// Written by the host into the work directory, if there is something to say.
inline constexpr wchar_t contextFileName[] = L"run_context.json";
/// Written by the scenario into the work directory.
inline constexpr wchar_t usedToolsFileName[] = L"used_tools.json";

/// Results of more files and directories, or nested deeper, are not reused.
inline constexpr std::size_t mostOutputs = 100'000;
inline constexpr int deepestOutput = 64;
/// The maximum number of tools and of files that a scenario may report.
inline constexpr std::size_t mostTools = 1000;

struct FileRecord {
    /// Absolute and native; of outputs relative to the output directory, with slashes.
    std::wstring path;
    /// Units: bytes.
    std::int64_t size = 0;
    /// 64 lower-case hexadecimal digits; empty if the file could not be read.
    std::wstring sha256;

    bool operator==(const FileRecord&) const = default;
};

struct ToolVersion {
    std::wstring name;
    std::wstring version;

    bool operator==(const ToolVersion&) const = default;
};

/// A program, recognized by the attributes of its file.
struct ProgramRecord {
    /// Empty for a packaged program, which is part of the scenario.
    std::wstring path;
    std::int64_t size = 0;
    /// Units: seconds since 1970-01-01 UTC.
    std::int64_t lastWrite = 0;
    /// Before the path of the script.
    std::vector<std::wstring> arguments;

    bool operator==(const ProgramRecord&) const = default;
};

/// What decides about results. Jobs with equal ingredients have equal results.
struct Ingredients {
    std::wstring controllerVersion;
    /// The script or package, and the description beside a script.
    std::vector<FileRecord> scenario;
    ProgramRecord interpreter;
    std::wstring runArgument;
    std::vector<FileRecord> inputs;
    /// The setting `toolVersions`.
    std::map<std::wstring, std::wstring> toolVersions;

    bool operator==(const Ingredients&) const = default;
};

/// A job by its id and number.
struct JobName {
    std::wstring jobId;
    std::int32_t jobNumber = 0;

    bool operator==(const JobName&) const = default;
};

struct Record : Ingredients {
    std::wstring jobId;
    std::int32_t attempt = 1;
    std::wstring machine;
    std::wstring user;
    /// UTC texts such as "2026-03-05T07:08:09Z".
    std::wstring startTime;
    std::wstring endTime;
    bool succeeded = false;
    /// What the scenario has reported.
    std::vector<ToolVersion> tools;
    std::vector<FileRecord> usedFiles;
    std::vector<FileRecord> outputs;
    std::vector<std::wstring> outputDirectories;
    /// Those of `outputs` that the result of the job names.
    std::vector<std::wstring> resultFiles;
    /// The job whose results these are, if they were reused.
    std::optional<JobName> resultsOf;
    /// Why the results must not be reused; empty if they may.
    std::wstring notReusable;

    bool operator==(const Record&) const = default;
};

/// A job whose results may be those of the job that is started.
struct Candidate : JobName {
    std::wstring outputDirectory;

    bool operator==(const Candidate&) const = default;
};

/// What a host knows about a run beside its request.
struct RunContext {
    std::int32_t attempt = 1;
    /// The first one that is proved right is used.
    std::vector<Candidate> candidates;
    /// What the processes of the run may use together; 0: no limit. Units: MiB; percent of a core.
    std::int64_t memoryLimitMiB = 0;
    std::int32_t cpuLimitPercent = 0;

    bool operator==(const RunContext&) const = default;
};

/// What a scenario reports about itself.
struct UsedTools {
    std::vector<ToolVersion> tools;
    /// Absolute paths of files that it has loaded.
    std::vector<std::wstring> files;

    bool operator==(const UsedTools&) const = default;
};

/// On failure return false and set `problem`, which names the file. A link is not followed.
[[nodiscard]] CONTROLLER_API bool ReadRecord(const std::wstring& path, Record& record, std::wstring& problem);
[[nodiscard]] CONTROLLER_API bool ReadContext(const std::wstring& path, RunContext& context, std::wstring& problem);
[[nodiscard]] CONTROLLER_API bool ReadUsedTools(const std::wstring& path, UsedTools& used, std::wstring& problem);

/// Return JSON.
CONTROLLER_API std::wstring Serialize(const Record& record);
CONTROLLER_API std::wstring Serialize(const RunContext& context);

} // namespace provenance
