#pragma once

#include "CommonControllerLib/JobRecords.h"

#include <string>
#include <vector>

/// Ends the scenarios that an earlier host left running: of each job that the list file says is active the
/// "killprocess" file is made, which its runner obeys wherever it runs, and every process of this machine that belongs
/// to a job that had not ended is ended by force, for its runner may be gone. To be called before the engine reads the
/// list.
void StopOrphanCleanup(const std::wstring& jobListFile);

/// Ends by force what still runs of those of `jobs` that have ended without a result: a runner always leaves one,
/// unless it was itself ended by force.
void KillOrphans(const std::vector<JobStatusInfo>& jobs);
