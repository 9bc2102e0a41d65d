#pragma once

#include "CommonControllerLib/JobStatus.h"

#include <optional>
#include <vector>

/// A kind of job that the long run enqueues: its scenario, and how a job of it ends that nobody disturbs.
struct JobKind {
    /// The name of its scenario file without the extension.
    const char* name;
    /// What the scenario does (see the program test_scenario).
    const char* steps;
    /// Nothing: it ends when it is cancelled, and not by itself.
    std::optional<JobStatus> end;
    /// How often it is chosen, compared with the others.
    int weight;
};

const std::vector<JobKind>& JobKinds();
