#pragma once

#include <string>

/// Asks the scenarios that an earlier host left running to stop: each job that the list file says is active gets its
/// "killprocess" file, which its runner obeys even if it did not notice the end of its host. To be called before the
/// engine reads the list.
void StopLeftoverScenarios(const std::wstring& jobListFile);
