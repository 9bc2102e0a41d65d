#include "kit/doubles/ScriptedProcess.h"

#include <bit>
#include <cstdint>

#include "platform/processes/Waiting.h"
#include "platform/system/OwnedHandle.h"

ScriptedProcess::ScriptedProcess()
    : end(std::make_shared<platform::Event>()), handle(platform::CopyHandle(end->Handle())) {}

std::wstring ScriptedProcess::Answer() const {
    return std::to_wstring(std::bit_cast<std::uintptr_t>(handle));
}

void ScriptedProcess::Finish() {
    end->Raise();
}

bool ScriptedProcess::IsRunning() const {
    return platform::IsProcessRunning(handle);
}
