#include "slurm/WaiterProgram.h"

#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"

namespace slurm {

std::wstring WaiterProgram() {
    return platform::ResolveAgainst(platform::ProgramDirectory(), L"slurm_waiter");
}

} // namespace slurm
