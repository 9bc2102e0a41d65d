#pragma once

#include "platform/system/OwnedHandle.h"

#include <string>
#include <vector>

/// The files that the program test_scenario leaves in its work directory.

/// Waits until a file of this name exists; ends the test program after the deadline.
void AwaitFile(const std::wstring& workDir, const std::wstring& name);

/// Opens all processes that the scenario recorded. Null for those that have ended.
std::vector<platform::OwnedHandle> OpenNotedProcesses(const std::wstring& workDir);

/// Waits for the end of each.
void AwaitDeathOf(const std::vector<platform::OwnedHandle>& processes);
