#pragma once

#include <string>
#include <vector>

#include "platform/processes/OutputPipe.h"
#include "platform/system/OwnedHandle.h"

namespace slurm {

/// One `srun`. It ends when this process ends, however that happens. Not thread-safe.
class SrunProcess {
public:
    /// Fails with `NotFound` if there is no `srun` in PATH.
    platform::Error Start(const std::vector<std::wstring>& arguments);

    /// Null before the start.
    void* Handle() const { return process.Get(); }
    bool IsRunning() const { return platform::IsProcessRunning(process.Get()); }
    /// Signalled when `CarryOutput` has something to do; null when no more can come.
    void* Readable() const { return isOutputOver ? nullptr : output.Readable(); }
    /// Must be called often, so that `srun` is not held up.
    void CarryOutput();
    /// The last lines of its output; empty if there are none.
    std::wstring LastLines() const;
    /// Kills the job without asking it.
    void Terminate();
    void Kill();

private:
    platform::OutputPipe output;
    platform::OwnedHandle process;
    std::string lastOutput;
    bool isOutputOver = true;
};

} // namespace slurm
