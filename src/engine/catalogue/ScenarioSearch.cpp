#include "engine/catalogue/ScenarioSearch.h"

#include "CommonControllerLib/PathFuncs.h"
#include "platform/files/FileSystem.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>

namespace {

/// The breadth-first walk of one root folder. Each folder is listed once for everything.
class Walk {
public:
    Walk(const ScenarioDirectory& walked, std::vector<ScenarioFile>& found) : directory(walked), files(found) {}

    std::vector<UnreadableFolder> Run() {
        for (std::size_t i = 0; i < folders.size(); ++i) {
            const std::wstring folder = folders[i]; // a copy: the visit lengthens the list
            Visit(folder);
        }
        return std::move(unreadable);
    }

private:
    void Visit(const std::wstring& folder) {
        entries.clear();
        const std::wstring path = PathFuncs::Join(directory.path, folder);
        if (const platform::Error error = platform::ListFolder(path, entries)) {
            unreadable.push_back({path, error});
            return;
        }
        AddFolders(folder);
        const bool hasSettings = HasAny(L".adc");
        AddFiles(folder, L".rb", hasSettings);
        AddFiles(folder, L".esa", hasSettings);
    }

    void AddFolders(const std::wstring& folder) {
        for (const platform::FolderEntry& entry : entries) {
            if (entry.isFolder && !(entry.isLink && LeadsBackUp(folder, entry.name))) {
                folders.push_back(PathFuncs::Join(folder, entry.name));
            }
        }
    }

    bool HasAny(const std::wstring& extension) const {
        return std::any_of(entries.begin(), entries.end(), [&extension](const platform::FolderEntry& entry) {
            return platform::HasExtension(entry.name, extension);
        });
    }

    void AddFiles(const std::wstring& folder, const std::wstring& extension, bool hasSettings) {
        for (const platform::FolderEntry& entry : entries) {
            if (platform::HasExtension(entry.name, extension)) {
                const std::wstring baseName = entry.name.substr(0, entry.name.size() - extension.size());
                files.push_back({extension, directory.path, folder, baseName, directory.label, hasSettings});
            }
        }
    }

    /// True when the link `name` in `folder` names that folder or one above it.
    bool LeadsBackUp(const std::wstring& folder, const std::wstring& name) const {
        const auto target = IdentityOf(PathFuncs::Join(folder, name));
        std::wstring ancestor = folder;
        while (target && !ancestor.empty()) {
            if (IdentityOf(ancestor) == target) {
                return true;
            }
            ancestor.erase(ancestor.find_last_of(L'\\') == std::wstring::npos ? 0 : ancestor.find_last_of(L'\\'));
        }
        return target && IdentityOf(L"") == target;
    }

    std::optional<platform::FileIdentity> IdentityOf(const std::wstring& folder) const {
        return platform::IdentityOf(PathFuncs::Join(directory.path, folder));
    }

    const ScenarioDirectory& directory;
    std::vector<ScenarioFile>& files;
    /// Relative to the root, which is the empty text; grows during the walk.
    std::vector<std::wstring> folders{std::wstring()};
    std::vector<platform::FolderEntry> entries;
    std::vector<UnreadableFolder> unreadable;
};

} // namespace

std::vector<UnreadableFolder> FindScenarioFiles(const ScenarioDirectory& directory, std::vector<ScenarioFile>& files) {
    return Walk(directory, files).Run();
}
