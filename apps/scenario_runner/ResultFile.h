#pragma once

#include <optional>
#include <string>

#include "formats/RunProtocol.h"

namespace scenario_runner {

/// The result file in a job's work directory.
class ResultFile {
public:
    explicit ResultFile(const std::wstring& workDir);

    /// Removes the file of an earlier run; only a result of this run counts. Returns false on failure.
    [[nodiscard]] bool Remove() const;
    /// True also for a dangling link.
    bool Exists() const;
    /// The parsed content; nothing if the file is missing or invalid.
    [[nodiscard]] std::optional<run_protocol::RunScenarioResult> Read() const;
    /// Replaces the file; returns false on failure.
    [[nodiscard]] bool Write(const run_protocol::RunScenarioResult& result) const;

private:
    std::wstring path;
};

} // namespace scenario_runner
