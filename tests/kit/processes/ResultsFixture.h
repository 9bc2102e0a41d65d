#pragma once

#include <string>
#include <vector>

#include "formats/Provenance.h"
#include "kit/processes/ScenarioRunFixture.h"

/// Jobs with two inputs and an output directory of their own.
class ResultsFixture : public ScenarioRunFixture {
protected:
    ResultsFixture();

    /// Uses a new output directory, and a new work directory.
    void UseNewDirectories(const std::wstring& name);
    /// Makes the job another one, for which the host names these earlier ones.
    void NameCandidates(std::vector<provenance::Candidate> candidates);
    std::wstring Output(const std::wstring& name) const;
    std::wstring RecordFile() const;
    /// The provenance of the results in the current output directory.
    provenance::Record ReadRecord() const;
};
