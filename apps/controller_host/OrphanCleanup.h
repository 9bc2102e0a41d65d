#pragma once

#include "CommonControllerLib/FunctionManager.h"
#include "CommonControllerLib/JobRecords.h"

#include <string>
#include <vector>

/// Ends the scenarios that an earlier host left running. Creates the "killprocess" file of each job that the list file
/// shows as active; its runner obeys it on any machine. Kills all processes on this machine that belong to an
/// unfinished job, because their runner may be dead. Called before the engine reads the list.
void StopOrphanCleanup(const std::wstring& jobListFile);

/// Lets the function module end what an earlier host left running on other machines, if the module has a function for
/// that. Does not wait for the end.
void EndLostRuns(const FunctionManager& functions);

/// Kills the remaining processes of those of `jobs` that have ended, or are queued again, without a result: a runner
/// always writes one unless it was killed. Returns when they have ended.
void KillOrphans(const std::vector<JobStatusInfo>& jobs);
