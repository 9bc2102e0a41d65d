#pragma once

#include "controller_host/HostEngine.h"
#include "controller_host/hooks/HookRunner.h"
#include "services/Settings.h"

#include <functional>
#include <string>
#include <vector>

/// Decides when the commands of the setting "hooks" run, and what they are told. Threads: the loop's only.
class Hooks {
public:
    /// Receives each call; returns at once.
    using Run = std::function<void(HookCall)>;

    /// `hostEngine` must outlive this object.
    Hooks(HostEngine& hostEngine, Run runCall) : engine(hostEngine), run(std::move(runCall)) {}

    /// Runs "jobEnded" for each job that has ended, and "jobFailed" for those that have failed. Each end must be
    /// reported once.
    void OnJobsChanged(const std::vector<JobStatusInfo>& changed);
    /// Called after each turn of the loop. Runs "queueEmpty" when no job runs or waits any more, once until there is
    /// one again.
    void OnTurnEnded();

private:
    void OnJobEnded(const JobStatusInfo& job);

    HostEngine& engine;
    Run run;
    bool wasBusy = false;
};
