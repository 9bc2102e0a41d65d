#pragma once

#include <string>
#include <vector>

namespace scenario_runner {

/// The content of an output directory, without its provenance file. Paths are relative, with slashes, in the order of
/// the directory; a directory precedes its content.
struct OutputListing {
    std::vector<std::wstring> files;
    std::vector<std::wstring> directories;
};

/// Lists an output directory. Returns why its content cannot be reused, in one sentence: it cannot be listed, it is a
/// link or contains one, it has names that paths cannot express, or it is too large. Empty on success. Links are not
/// followed.
[[nodiscard]] std::wstring ListOutputs(const std::wstring& directory, OutputListing& outputs);

} // namespace scenario_runner
