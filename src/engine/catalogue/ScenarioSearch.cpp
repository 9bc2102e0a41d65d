#include "engine/catalogue/ScenarioSearch.h"

#include "CommonControllerLib/PathFuncs.h"
#include "platform/files/FileSystem.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace {

/// The breadth-first search of one root directory. Each directory is listed only once.
class Walk {
public:
    Walk(const ScenarioDirectory& walked, std::vector<ScenarioFile>& found) : root(walked), files(found) {}

    std::vector<UnreadableDirectory> Run() {
        for (std::size_t i = 0; i < directories.size(); ++i) {
            const std::wstring directory = directories[i]; // a copy, because the visit appends to the list
            Visit(directory);
        }
        return std::move(unreadable);
    }

private:
    void Visit(const std::wstring& directory) {
        entries.clear();
        const std::wstring path = PathFuncs::Join(root.path, directory);
        if (const platform::Error error = platform::ListDirectory(path, entries)) {
            unreadable.push_back({path, error});
            return;
        }
        AddDirectories(directory);
        const bool hasSettings = HasAny(L".adc");
        AddFiles(directory, L".rb", hasSettings);
        AddFiles(directory, L".esa", hasSettings);
    }

    void AddDirectories(const std::wstring& directory) {
        for (const platform::DirectoryEntry& entry : entries) {
            if (entry.isDirectory && !(entry.isLink && LeadsBackUp(directory, entry.name))) {
                directories.push_back(PathFuncs::Join(directory, entry.name));
            }
        }
    }

    bool HasAny(const std::wstring& extension) const {
        return std::any_of(entries.begin(), entries.end(), [&extension](const platform::DirectoryEntry& entry) {
            return platform::HasExtension(entry.name, extension);
        });
    }

    void AddFiles(const std::wstring& directory, const std::wstring& extension, bool hasSettings) {
        for (const platform::DirectoryEntry& entry : entries) {
            if (platform::HasExtension(entry.name, extension)) {
                const std::wstring baseName = entry.name.substr(0, entry.name.size() - extension.size());
                files.push_back({extension, root.path, directory, baseName, root.label, hasSettings});
            }
        }
    }

    /// Returns true if the link `name` in `directory` refers to that directory or one of its parents.
    bool LeadsBackUp(const std::wstring& directory, const std::wstring& name) const {
        const auto target = IdentityOf(PathFuncs::Join(directory, name));
        std::wstring ancestor = directory;
        while (target && !ancestor.empty()) {
            if (IdentityOf(ancestor) == target) {
                return true;
            }
            ancestor.erase(ancestor.find_last_of(L'\\') == std::wstring::npos ? 0 : ancestor.find_last_of(L'\\'));
        }
        return target && IdentityOf(L"") == target;
    }

    std::optional<platform::FileIdentity> IdentityOf(const std::wstring& directory) const {
        return platform::IdentityOf(PathFuncs::Join(root.path, directory));
    }

    const ScenarioDirectory& root;
    std::vector<ScenarioFile>& files;
    /// Relative to the root, which is the empty text; grows during the search.
    std::vector<std::wstring> directories{std::wstring()};
    std::vector<platform::DirectoryEntry> entries;
    std::vector<UnreadableDirectory> unreadable;
};

} // namespace

std::vector<UnreadableDirectory> FindScenarioFiles(const ScenarioDirectory& directory,
                                                   std::vector<ScenarioFile>& files) {
    return Walk(directory, files).Run();
}
