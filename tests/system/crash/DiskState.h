#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "kit/JobLedger.h"
#include "system/crash/CrashCounts.h"
#include "system/crash/CrashSite.h"

#include <vector>

/// Checks of a data directory after the kill of its host. Failures are reported to GoogleTest.
namespace crash {

/// Checks that the list file is readable or missing, and returns its rows.
std::vector<JobListInfo> ReadList(const CrashSite& site, CrashCounts& counts);

/// Checks that a host has no waiting or running job.
void ExpectNoActiveJob(const std::vector<JobListInfo>& list);

/// Checks that a newly started host cancels and keeps the jobs of the list `before` it as the ledger's rule says. A
/// kept job may have started and ended since.
void ExpectRestartRule(const JobLedger& ledger, const std::vector<JobListInfo>& before,
                       const std::vector<JobListInfo>& after);
/// Checks that the kept jobs which end by themselves have ended as their scenarios say.
void ExpectKeptJobsRan(const CrashSite& site, const JobLedger& ledger, const std::vector<JobListInfo>& before,
                       const std::vector<JobListInfo>& after);

/// Waits for the end of all processes of all started scenarios.
void AwaitEndOfScenarios(const CrashSite& site, CrashCounts& counts);

/// Checks that each listed job that has started has its work directory, and that each work directory belongs to a
/// listed job or is in the deletion journal because it could not be removed.
void CompareWorkDirectories(const CrashSite& site, const std::vector<JobListInfo>& list, CrashCounts& counts);

/// Checks that there are no half-written files and no quarantined list.
void ExpectNoStrayFiles(const CrashSite& site);

/// Checks that the deletion journal is empty.
void ExpectNothingNoted(const CrashSite& site);

} // namespace crash
