#include "doubles/ScriptedProcess.h"

#include "platform/ProcessHandle.h"
#include "platform/Waiting.h"

#include <vector>

/// A wait on it looks as that on a process does: over once it is raised.
class ScriptedProcess::Signal : public platform::Event {
public:
    /// Reachable for ever, and never destroyed.
    static Signal* Make() {
        static auto& made = *new std::vector<Signal*>;
        made.push_back(new Signal);
        return made.back();
    }
};

ScriptedProcess::ScriptedProcess() : signal(Signal::Make()) {}

void* ScriptedProcess::Handle() const {
    return signal->Handle();
}

void ScriptedProcess::Finish() {
    signal->Raise();
}

bool ScriptedProcess::IsRunning() const {
    return platform::IsProcessRunning(signal->Handle());
}
