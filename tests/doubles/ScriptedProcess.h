#pragma once

#include <memory>
#include <string>

namespace platform {
class Event;
}

/// Stands for the process of a job: it runs until the test says that it ends.
///
/// Its handle belongs to whom it is given to, who closes it: it is a copy, so that closing it on another thread does
/// not meet the call that ends the process.
class ScriptedProcess {
public:
    ScriptedProcess();

    void* Handle() const { return handle; }
    /// For a module to answer with (see `ScriptedEngine`).
    std::wstring Answer() const;
    void Finish();
    /// True when the handle was not closed yet and the process has not ended.
    bool IsRunning() const;

private:
    /// Raised when the process ends: a wait on it looks as that on a process does.
    std::shared_ptr<platform::Event> end;
    void* handle;
};
