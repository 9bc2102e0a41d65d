#include "system/soak/JobKinds.h"

const std::vector<JobKind>& JobKinds() {
    static const std::vector<JobKind> kinds{
        {"success", "exit 0", JobStatus::Success, 30},
        {"failure", "print no way\nexit 3", JobStatus::Failed, 15},
        {"own_result", "write result success", JobStatus::Success, 10},
        {"unusable_result", "write unusable result", JobStatus::Failed, 5},
        {"progress", "report progress 10\nreport progress 60\nreport progress 90", JobStatus::Success, 10},
        {"prints_much", "print lines 20000\nexit 0", JobStatus::Success, 8},
        {"leaves_family", "have family\nexit 0", JobStatus::Success, 3},
        {"waits", "report progress 30\nwait for request\nexit 0", std::nullopt, 10},
        {"waits_with_family", "report progress 40\nhave family\nwait", std::nullopt, 4},
        {"stubborn", "ignore requests\nreport progress 50\nwait", std::nullopt, 1},
    };
    return kinds;
}
