#include "system/soak/Leaks.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/Require.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "text/Text.h"

#include <algorithm>
#include <set>

namespace {

using Names = std::set<std::wstring>;

constexpr std::uint64_t mostLogBytes = std::uint64_t{5} * (10U << 20U);

Names NamesIn(const std::wstring& directory) {
    std::vector<platform::DirectoryEntry> entries;
    const platform::Error result = platform::ListDirectory(directory, entries);
    // There may be no failures; work directories are removed with their jobs.
    if (result.kind != platform::ErrorKind::NotFound) {
        test_support::Require(result, "cannot list " + text::ToUtf8(directory));
    }
    Names names;
    for (const platform::DirectoryEntry& entry : entries) {
        names.insert(entry.name);
    }
    return names;
}

bool IsLog(const std::wstring& name) {
    return name.starts_with(L"controller.log");
}

bool BelongsInTheDirectory(const std::wstring& name) {
    static const Names known{L"settings.json",
                             L"inputs.txt",
                             L"jobs.json",
                             L"scenarios",
                             L"job_list.json",
                             L"job_list.json.bak",
                             L"job_list.json.lock",
                             L"job_list.json.failures",
                             L"work",
                             L"out",
                             L"temporary",
                             L"user"};
    return known.contains(name) || IsLog(name);
}

/// A scenario or runner killed while it replaced a file leaves a temporary file, which is removed with the job.
bool BelongsInAWorkDirectory(const std::wstring& name) {
    static const Names known{L"run_scenario_info.json",
                             L"progress_info_list.json",
                             L"run_scenario_result.json",
                             L"run_context.json",
                             L"killprocess",
                             L"scenario.log"};
    const bool isLogOfAttempt = name.starts_with(L"scenario.") && name.ends_with(L".log");
    return known.contains(name) || isLogOfAttempt || name.starts_with(L"process-") ||
           name.find(L".tmp-") != std::wstring::npos;
}

void ObjectToOthers(const std::wstring& directory, bool (*belongs)(const std::wstring&),
                    std::vector<std::string>& problems) {
    for (const std::wstring& name : NamesIn(directory)) {
        if (!belongs(name)) {
            problems.push_back("Left behind: " + text::ToUtf8(directory + L"\\" + name));
        }
    }
}

/// A started job has its work directory, and there are no others.
void CheckWorkDirectories(const std::wstring& workDirectory, const std::vector<JobListInfo>& jobs,
                          std::vector<std::string>& problems) {
    Names others = NamesIn(workDirectory);
    for (const JobListInfo& job : jobs) {
        if (others.erase(job.id) == 0 && !job.startTime.empty()) {
            problems.push_back("Job " + text::ToUtf8(job.id) + " has no work directory");
        }
        ObjectToOthers(workDirectory + L"\\" + job.id, BelongsInAWorkDirectory, problems);
    }
    for (const std::wstring& name : others) {
        problems.push_back("A work directory without a job: " + text::ToUtf8(name));
    }
}

/// Failure notes of the host for jobs that never reached the runner are removed with these jobs.
void CheckFailureNotes(const std::wstring& notesDirectory, const std::vector<JobListInfo>& jobs,
                       std::vector<std::string>& problems) {
    Names others = NamesIn(notesDirectory);
    for (const JobListInfo& job : jobs) {
        others.erase(job.id + L".json");
    }
    for (const std::wstring& name : others) {
        problems.push_back("A failure note without a job: " + text::ToUtf8(name));
    }
}

void CheckListFile(const std::wstring& path, const std::vector<JobListInfo>& jobs, std::vector<std::string>& problems) {
    std::vector<JobListInfo> saved;
    if (!ControllerCSWrapper::ParseJobList(path, saved) || saved != jobs) {
        problems.push_back("The list file does not hold the " + std::to_string(jobs.size()) +
                           " jobs of the list, but " + std::to_string(saved.size()));
    }
}

} // namespace

std::uint64_t LogBytes(const std::wstring& directory) {
    std::uint64_t bytes = 0;
    for (const std::wstring& name : NamesIn(directory)) {
        if (IsLog(name)) {
            bytes += platform::StampOf(directory + L"\\" + name).value_or(platform::FileStamp{}).size;
        }
    }
    return bytes;
}

std::vector<std::string> FindLeaks(const std::wstring& directory, const std::vector<JobListInfo>& jobs) {
    std::vector<std::string> problems;
    ObjectToOthers(directory, BelongsInTheDirectory, problems);
    CheckWorkDirectories(directory + L"\\work", jobs, problems);
    CheckFailureNotes(directory + L"\\job_list.json.failures", jobs, problems);
    CheckListFile(directory + L"\\job_list.json", jobs, problems);
    if (LogBytes(directory) > mostLogBytes) {
        problems.push_back("The log has " + std::to_string(LogBytes(directory)) + " bytes");
    }
    return problems;
}
