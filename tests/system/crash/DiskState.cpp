#include "system/crash/DiskState.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/RunProtocol.h"
#include "kit/Deadline.h"
#include "platform/files/Directory.h"
#include "platform/files/FileLock.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/processes/Waiting.h"
#include "text/Text.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

namespace crash {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

std::vector<platform::DirectoryEntry> EntriesOf(const std::wstring& directory) {
    std::vector<platform::DirectoryEntry> entries;
    const platform::Error result = platform::ListDirectory(directory, entries);
    EXPECT_TRUE(result || result.kind == platform::ErrorKind::NotFound) << text::ToUtf8(result.Text());
    return entries;
}

std::wstring NotesFile(const CrashSite& site) {
    return site.List() + L".deletions";
}

/// The ids of jobs whose work directories are still to be removed.
std::set<std::wstring> NotedIds(const CrashSite& site) {
    std::set<std::wstring> ids;
    std::vector<JobListInfo> noted;
    if (platform::Exists(NotesFile(site))) {
        EXPECT_TRUE(ControllerCSWrapper::ParseJobList(NotesFile(site), noted)) << "the notes cannot be read";
    }
    for (const JobListInfo& job : noted) {
        ids.insert(job.id);
    }
    return ids;
}

const JobListInfo* FindId(const std::vector<JobListInfo>& list, const std::wstring& id) {
    const auto row = std::find_if(list.begin(), list.end(), [&id](const JobListInfo& job) { return job.id == id; });
    return row == list.end() ? nullptr : &*row;
}

/// The end of a process that is not a child cannot be waited for, but its lock is free then.
void AwaitEndOf(const std::wstring& life) {
    const test_support::Deadline deadline("the end of a scenario whose host is dead");
    constexpr milliseconds interval{2};
    platform::FileLock lock;
    while (!lock.Take(life)) {
        platform::WaitForAny({}, interval);
    }
}

} // namespace

std::vector<JobListInfo> ReadList(const CrashSite& site, CrashCounts& counts) {
    std::vector<JobListInfo> list;
    if (platform::Exists(site.List())) {
        EXPECT_TRUE(ControllerCSWrapper::ParseJobList(site.List(), list)) << "the list cannot be read";
        ++counts.listsParsed;
    }
    if (platform::Exists(site.List() + L".bak")) {
        std::vector<JobListInfo> backup;
        EXPECT_TRUE(ControllerCSWrapper::ParseJobList(site.List() + L".bak", backup)) << "the backup cannot be read";
        ++counts.listsParsed;
    }
    return list;
}

void ExpectNoActiveJob(const std::vector<JobListInfo>& list) {
    for (const JobListInfo& job : list) {
        EXPECT_TRUE(IsFinal(job.status)) << "job " << job.seqId << " is " << JobStatusString(job.status)
                                         << " without a process";
    }
}

void ExpectRestartRule(const JobLedger& ledger, const std::vector<JobListInfo>& before,
                       const std::vector<JobListInfo>& after) {
    for (const JobListInfo& job : before) {
        const JobListInfo* const row = FindId(after, job.id);
        if (row == nullptr || IsFinal(job.status)) {
            continue;
        }
        const bool isCancelled = row->status == JobStatus::Canceled || row->status == JobStatus::Dequeued;
        EXPECT_EQ(isCancelled, ledger.StatusAtStart(job.status) == JobStatus::Canceled)
            << "job " << job.seqId << " was " << JobStatusString(job.status) << " and is "
            << JobStatusString(row->status) << " after a restart";
    }
}

void ExpectKeptJobsRan(const CrashSite& site, const JobLedger& ledger, const std::vector<JobListInfo>& before,
                       const std::vector<JobListInfo>& after) {
    for (const JobListInfo& job : before) {
        const JobListInfo* const row = FindId(after, job.id);
        const bool wasKept = !IsFinal(job.status) && ledger.StatusAtStart(job.status) == JobStatus::Queued;
        const auto end = site.EndOf(job.scenario.id);
        if (row != nullptr && wasKept && end) {
            EXPECT_EQ(row->status, *end) << "job " << job.seqId << " was kept by a restart";
        }
    }
}

void AwaitEndOfScenarios(const CrashSite& site, CrashCounts& counts) {
    const auto start = steady_clock::now();
    for (const platform::DirectoryEntry& life : EntriesOf(site.Lives())) {
        const std::wstring path = platform::ResolveAgainst(site.Lives(), life.name);
        AwaitEndOf(path);
        EXPECT_TRUE(platform::RemoveFile(path));
        ++counts.processesLookedFor;
    }
    const auto passed = std::chrono::duration_cast<milliseconds>(steady_clock::now() - start);
    counts.longestSurvival = std::max(counts.longestSurvival, passed);
}

void CompareWorkDirectories(const CrashSite& site, const std::vector<JobListInfo>& list, CrashCounts& counts) {
    std::set<std::wstring> ids = NotedIds(site);
    for (const JobListInfo& job : list) {
        ids.insert(job.id);
        const std::wstring request = platform::ResolveAgainst(job.workDir, run_protocol::runInfoFileName);
        EXPECT_TRUE(job.startTime.empty() || platform::Exists(request))
            << "job " << job.seqId << " has started and has no work directory (any more)";
    }
    for (const platform::DirectoryEntry& entry : EntriesOf(site.WorkDirectory())) {
        EXPECT_TRUE(ids.contains(entry.name)) << "a work directory of no job: " << text::ToUtf8(entry.name);
        ++counts.workDirectoriesCompared;
    }
}

void ExpectNoStrayFiles(const CrashSite& site) {
    for (const platform::DirectoryEntry& entry : EntriesOf(site.Directory())) {
        for (const wchar_t* const trace : {L".tmp-", L".corrupt-", L".replaced"}) {
            EXPECT_EQ(entry.name.find(trace), std::wstring::npos) << "left behind: " << text::ToUtf8(entry.name);
        }
    }
}

void ExpectNothingNoted(const CrashSite& site) {
    EXPECT_FALSE(platform::Exists(NotesFile(site))) << "work directories of deleted jobs stay";
}

} // namespace crash
