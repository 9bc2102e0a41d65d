#include "doubles/ScriptedProcess.h"

#include "platform/ProcessHandle.h"
#include "platform/Waiting.h"

ScriptedProcess::ScriptedProcess()
    : end(std::make_shared<platform::Event>()), handle(platform::CopyHandle(end->Handle())) {}

void ScriptedProcess::Finish() {
    end->Raise();
}

bool ScriptedProcess::IsRunning() const {
    return platform::IsProcessRunning(handle);
}
