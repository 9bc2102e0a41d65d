#include "slurm/WaiterProgram.h"

#include "platform/system/Installation.h"

namespace slurm {

std::wstring WaiterProgram() {
    return platform::InstalledProgram(L"slurm_waiter", platform::OwnDirectory());
}

} // namespace slurm
