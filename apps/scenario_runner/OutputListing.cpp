#include "scenario_runner/OutputListing.h"

#include "formats/Provenance.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace scenario_runner {
namespace {

class Lister {
public:
    Lister(const std::wstring& listedRoot, OutputListing& listing) : root(listedRoot), outputs(listing) {}

    /// `prefix` is empty or ends with a slash.
    std::wstring List(const std::wstring& prefix, int depth) {
        const std::wstring directory = platform::ResolveAgainst(root, prefix);
        std::vector<platform::DirectoryEntry> entries;
        bool isComplete = true;
        if (const platform::Error result = platform::ListDirectory(directory, entries, &isComplete); !result) {
            return platform::ToNativeText(directory) + L" cannot be listed: " + result.Text() + L".";
        }
        if (!isComplete) {
            return platform::ToNativeText(directory) + L" has a file with a backslash in its name.";
        }
        for (const platform::DirectoryEntry& entry : entries) {
            if (std::wstring problem = Add(prefix + entry.name, entry, depth); !problem.empty()) {
                return problem;
            }
        }
        return {};
    }

private:
    std::wstring Add(const std::wstring& path, const platform::DirectoryEntry& entry, int depth) {
        if (entry.isLink) {
            return L"The output " + path + L" is a link.";
        }
        if (outputs.files.size() + outputs.directories.size() >= provenance::mostOutputs) {
            return L"There are more than " + std::to_wstring(provenance::mostOutputs) + L" outputs.";
        }
        if (!entry.isDirectory) {
            if (path != provenance::fileName) {
                outputs.files.push_back(path);
            }
            return {};
        }
        outputs.directories.push_back(path);
        return depth == provenance::deepestOutput ? L"The outputs are nested too deeply."
                                                  : List(path + L"/", depth + 1);
    }

    const std::wstring& root;
    OutputListing& outputs;
};

} // namespace

std::wstring ListOutputs(const std::wstring& directory, OutputListing& outputs) {
    if (platform::IsLink(directory)) {
        return L"The output directory " + platform::ToNativeText(directory) + L" is a link.";
    }
    return Lister(directory, outputs).List({}, 0);
}

} // namespace scenario_runner
