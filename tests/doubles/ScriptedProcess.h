#pragma once

/// Stands for the process of a job: it runs until the test says that it ends.
///
/// Its handle belongs to whom it is given to, who closes it. So what stands behind the handle is never given back here:
/// it would be closed twice.
class ScriptedProcess {
public:
    ScriptedProcess();

    void* Handle() const;
    /// Not after its handle was closed.
    void Finish();
    /// True when the handle was not closed yet and the process has not ended.
    bool IsRunning() const;

private:
    class Signal;
    Signal* signal;
};
