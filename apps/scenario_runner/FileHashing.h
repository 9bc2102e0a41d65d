#pragma once

#include <string>
#include <vector>

#include "formats/Provenance.h"
#include "platform/files/FileSystem.h"
#include "scenario_runner/StopRequests.h"

namespace scenario_runner {

/// Sets size and hash of a file; its path is kept. Returns why that is not possible, in one sentence: it cannot be
/// read, or it changes meanwhile. Empty on success. Throws `Stopped`.
[[nodiscard]] std::wstring HashFile(const std::wstring& path, const StopCheck& isStopped,
                                    provenance::FileRecord& record);

/// The files from which results are made, with their content at the beginning of the run.
class SourceFiles {
public:
    explicit SourceFiles(StopCheck stopCheck) : isStopped(std::move(stopCheck)) {}

    /// Hashes a file and remembers its state. A file that cannot be hashed gets an empty hash, and `Problem` says why.
    /// Throws `Stopped`.
    provenance::FileRecord Add(const std::wstring& path);

    /// Compares the files with their state at the beginning. Throws `Stopped`.
    void CheckUnchanged();

    /// The first problem of all calls; empty if there was none.
    const std::wstring& Problem() const { return problem; }

private:
    struct Source {
        provenance::FileRecord record;
        platform::FileStamp stamp;
        /// Written so shortly before that a further change could leave the same time of the last write.
        bool isFresh = false;
    };

    void Note(const std::wstring& newProblem);
    void CheckUnchanged(const Source& source);

    StopCheck isStopped;
    std::vector<Source> sources;
    std::wstring problem;
};

} // namespace scenario_runner
