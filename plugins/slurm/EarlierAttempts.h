#pragma once

#include <chrono>
#include <map>
#include <string>

#include "slurm/AttemptFiles.h"
#include "slurm/CancelPlan.h"
#include "slurm/ClusterCommands.h"

namespace slurm {

/// Ends the earlier attempts of a job before the next one starts. Slurm may consider a job as ended while its
/// processes still run on a node without connection, so its word is not enough: the attempt itself must have written
/// its end, or it must have had time to notice that it lost the lease and to end. Not thread-safe.
class EarlierAttempts {
public:
    /// `longestSilence`: how long an attempt runs without having seen a lease of its own.
    EarlierAttempts(const AttemptFiles& attemptFiles, std::chrono::milliseconds longestSilence)
        : files(attemptFiles), silence(longestSilence) {}

    /// Takes the lease. Returns false if it cannot be written.
    [[nodiscard]] bool TakeLease();

    /// True when none is left. Called about once a second; asks the cluster to cancel what is left.
    [[nodiscard]] bool AreOver(Time now);

private:
    const AttemptFiles& files;
    std::chrono::milliseconds silence;
    Time taken;
    std::map<std::wstring, RepeatedCancel> cancels;
};

} // namespace slurm
