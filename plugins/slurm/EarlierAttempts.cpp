#include "slurm/EarlierAttempts.h"

namespace slurm {
namespace {

/// For the end of the processes of an attempt that has lost the lease.
constexpr std::chrono::seconds endTime{10};

} // namespace

bool EarlierAttempts::TakeLease() {
    constexpr std::chrono::seconds timeout{10};
    const std::optional<Lease> before = files.ReadLease();
    if (!files.WriteLease(0)) {
        return false;
    }
    // An attempt that starts after this has no lease, and does nothing.
    if (before && before->name != files.Name()) {
        CancelJobs(before->name, timeout);
    }
    taken = std::chrono::steady_clock::now();
    return true;
}

bool EarlierAttempts::AreOver(Time now) {
    const std::vector<std::wstring> left = files.OthersWithoutEnd();
    for (const std::wstring& name : left) {
        cancels.try_emplace(name, name).first->second.Ask();
    }
    return left.empty() || now > taken + silence + endTime;
}

} // namespace slurm
