#pragma once

#include "CommonControllerLib/JobStatus.h"

#include <optional>
#include <vector>

/// A kind of job for the soak test: its scenario, and its status at an undisturbed end.
struct JobKind {
    /// The name of its scenario file without extension.
    const char* name;
    /// The steps of the scenario (see the program test_scenario).
    const char* steps;
    /// Nothing: it ends only when cancelled.
    std::optional<JobStatus> end;
    /// Relative frequency.
    int weight;
};

const std::vector<JobKind>& JobKinds();
