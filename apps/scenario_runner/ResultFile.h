#pragma once

#include <optional>
#include <string>

#include "formats/RunProtocol.h"

namespace scenario_runner {

/// The result file in a job's work directory.
class ResultFile {
public:
    explicit ResultFile(const std::wstring& workDir);

    /// Removes what was left from before: only a result of this run counts. False when it cannot be removed.
    [[nodiscard]] bool Remove() const;
    /// A link to nothing exists too.
    bool Exists() const;
    /// What stands in it; none when it is missing or not usable.
    [[nodiscard]] std::optional<run_protocol::RunScenarioResult> Read() const;
    /// Replaces it; false when that failed.
    [[nodiscard]] bool Write(const run_protocol::RunScenarioResult& result) const;

private:
    std::wstring path;
};

} // namespace scenario_runner
