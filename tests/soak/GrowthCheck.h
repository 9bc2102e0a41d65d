#pragma once

#include "HostFigures.h"

#include <string>
#include <vector>

/// A process's figures at a quiet moment, when it had handled so many jobs since its start.
struct Sample {
    int jobs = 0;
    HostFigures figures;
};

/// What may grow, and how much memory may come and go by chance.
struct GrowthLimits {
    /// What each job leaves behind on purpose.
    double specifiedBytesPerJob = 0;
    double noiseBytesPerJob = 0;
    /// Over all samples: the pieces in which memory comes from the system are large for few jobs.
    double noiseBytes = 0;
};

/// By how much private memory grows with each job: the slope of the line with the least squares through all samples; 0
/// for samples that are not at two numbers of jobs.
double BytesPerJob(const std::vector<Sample>& samples);

/// The slope that the limits allow for these samples.
double AllowedBytesPerJob(const std::vector<Sample>& samples, const GrowthLimits& limits);

/// Why these samples, all taken after the warm-up, are not those of a process that stays as it is; empty when they are.
std::vector<std::string> ReasonsNotFlat(const std::vector<Sample>& samples, const GrowthLimits& limits);
