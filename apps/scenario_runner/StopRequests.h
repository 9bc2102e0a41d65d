#pragma once

#include <exception>
#include <functional>
#include <string>
#include <vector>

#include "platform/processes/StopSignal.h"

namespace scenario_runner {

/// True if one of the processes has ended whose end ends the run.
bool HasLostOwner(const std::vector<void*>& owners);

/// True if the run was asked to stop, by a signal or by the file `killFile`.
bool IsStopRequested(const platform::StopSignal& signal, const std::wstring& killFile);

/// True if the run must end. Called often while files are read.
using StopCheck = std::function<bool()>;

/// Thrown where a `StopCheck` ends the work.
class Stopped : public std::exception {
public:
    const char* what() const noexcept override { return "the run was asked to stop"; }
};

} // namespace scenario_runner
