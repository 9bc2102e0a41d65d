#pragma once

#include <optional>
#include <string>
#include <vector>

#include "formats/Provenance.h"
#include "scenario_runner/StopRequests.h"

namespace scenario_runner {

/// Fills an output directory with the results of an earlier job. The files are copied, and each is hashed while it is
/// copied: what the new job gets is proved to be what the earlier one made.
class ResultReuse {
public:
    ResultReuse(std::wstring newOutputDirectory, const provenance::Ingredients& usedIngredients, StopCheck stopCheck);

    /// Copies the results of the first candidate that has equal ingredients and unchanged outputs, and returns its
    /// record. Without one, returns nothing and leaves the output directory empty. Throws `Stopped`, and
    /// `std::runtime_error` if the output directory cannot be emptied.
    [[nodiscard]] std::optional<provenance::Record> Take(const std::vector<provenance::Candidate>& candidates);

    /// Empties the output directory again. Throws as `Take`.
    void Undo() const;

private:
    /// Why the results of this candidate cannot be used; empty if they were copied.
    std::wstring TakeFrom(const provenance::Candidate& candidate, provenance::Record& record);
    std::wstring WhyNotUsable(const provenance::Candidate& candidate, const provenance::Record& record) const;
    std::wstring WhyNotCopied(const std::wstring& from, const provenance::Record& record);
    std::wstring CopyOutput(const std::wstring& from, const provenance::FileRecord& file);

    std::wstring outputDirectory;
    const provenance::Ingredients& ingredients;
    StopCheck isStopped;
};

} // namespace scenario_runner
