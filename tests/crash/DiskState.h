#pragma once

#include "CommonControllerLib/JobRecords.h"
#include "crash/CrashCounts.h"
#include "crash/CrashSite.h"

#include <vector>

/// What must hold in a data directory after the sudden end of its host. Failures go to GoogleTest.
namespace crash {

/// The list file can be read, or there is none yet; its rows.
std::vector<JobListInfo> ReadList(const CrashSite& site, CrashCounts& counts);

/// No job of a host that has just started waits or runs.
void ExpectNoActiveJob(const std::vector<JobListInfo>& list);

/// Waits for the end of every process of every scenario that was started.
void AwaitEndOfScenarios(const CrashSite& site, CrashCounts& counts);

/// Every listed job that has started has its work directory, and every work directory belongs to a listed job, or is
/// noted to be removed because it could not be when its job was deleted.
void CompareWorkDirectories(const CrashSite& site, const std::vector<JobListInfo>& list, CrashCounts& counts);

/// Nothing half-written lies about, and no list had to be set aside.
void ExpectNoStrayFiles(const CrashSite& site);

/// No work directory waits to be removed.
void ExpectNothingNoted(const CrashSite& site);

} // namespace crash
