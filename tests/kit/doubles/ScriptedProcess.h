#pragma once

#include <memory>
#include <string>

namespace platform {
class Event;
}

/// A double for the process of a job: it runs until the test ends it.
///
/// Its handle belongs to the receiver, who closes it. The handle is a copy, so that closing it on another thread does
/// not
/// race with the call that ends the process.
class ScriptedProcess {
public:
    ScriptedProcess();

    void* Handle() const { return handle; }
    /// The answer of a module (see `ScriptedEngine`).
    std::wstring Answer() const;
    void Finish();
    /// True if the handle is open and the process has not ended.
    bool IsRunning() const;

private:
    /// Raised at the end of the process, so that it can be waited for like a process.
    std::shared_ptr<platform::Event> end;
    void* handle;
};
