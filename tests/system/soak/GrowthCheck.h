#pragma once

#include "system/soak/HostFigures.h"

#include <string>
#include <vector>

/// The figures of a process at an idle point, after it has handled this many jobs.
struct Sample {
    int jobs = 0;
    HostFigures figures;
};

/// Allowed growth and noise of memory.
struct GrowthLimits {
    /// Memory that each job uses permanently by design.
    double specifiedBytesPerJob = 0;
    double noiseBytesPerJob = 0;
    /// Over all samples: allocation granularity is large relative to few jobs.
    double noiseBytes = 0;
};

/// Growth of private memory per job: the least-squares slope through all samples; 0 if all have the same number of
/// jobs.
double BytesPerJob(const std::vector<Sample>& samples);

/// The slope that the limits allow for these samples.
double AllowedBytesPerJob(const std::vector<Sample>& samples, const GrowthLimits& limits);

/// Why these samples, taken after the warm-up, show growth; empty if they do not.
std::vector<std::string> ReasonsNotFlat(const std::vector<Sample>& samples, const GrowthLimits& limits);
