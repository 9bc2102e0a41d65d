#pragma once

#include "platform/processes/ProcessHandle.h"

#include <string>
#include <vector>

/// The traces that the program test_scenario leaves in its work directory.

/// Waits until there is a file of this name; ends the test program when none comes.
void AwaitFile(const std::wstring& workDir, const std::wstring& name);

/// Opens all processes of the scenario that it noted down. Null for one that has ended.
std::vector<platform::OwnedHandle> OpenNotedProcesses(const std::wstring& workDir);

/// Waits for the end of each.
void AwaitDeathOf(const std::vector<platform::OwnedHandle>& processes);
