#include "engine/catalogue/ScenarioSearch.h"

#include "CommonControllerLib/PathFuncs.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace {

/// The breadth-first search of one root directory. Each directory is listed only once.
class Walk {
public:
    Walk(const ScenarioDirectory& root, const ScenarioFileVisitor& visitor, const std::vector<std::wstring>& wanted)
        : visit(visitor), extensions(wanted) {
        file.root = root.path;
        file.label = root.label;
    }

    std::vector<UnreadableDirectory> Run() {
        for (std::size_t i = 0; i < directories.size(); ++i) {
            const std::wstring directory = directories[i]; // a copy, because the search appends to the list
            Search(directory);
        }
        return std::move(unreadable);
    }

private:
    void Search(const std::wstring& directory) {
        entries.clear();
        const std::wstring path = PathFuncs::Join(file.root, directory);
        if (const platform::Error result = platform::ListDirectory(path, entries); !result) {
            unreadable.push_back({path, result});
            return;
        }
        AddDirectories(directory);
        FindSettings();
        file.relativeDirectory = directory;
        for (const std::wstring& extension : extensions) {
            VisitFiles(extension);
        }
    }

    void AddDirectories(const std::wstring& directory) {
        for (const platform::DirectoryEntry& entry : entries) {
            if (entry.isDirectory && !(entry.isLink && LeadsBackUp(directory, entry.name))) {
                directories.push_back(PathFuncs::Join(directory, entry.name));
            }
        }
    }

    void FindSettings() {
        static const std::wstring extension = L".adc";
        settingsNames.clear();
        for (const platform::DirectoryEntry& entry : entries) {
            if (HasExtension(entry.name, extension)) {
                settingsNames.push_back(BaseName(entry.name, extension));
            }
        }
        std::sort(settingsNames.begin(), settingsNames.end());
    }

    /// A system that ignores case is asked when the names are not spelled alike.
    bool HasSettings() const {
        if (settingsNames.empty() || std::binary_search(settingsNames.begin(), settingsNames.end(), file.baseName)) {
            return !settingsNames.empty();
        }
        return ignoresCase && platform::Exists(SettingsPath(file));
    }

    void VisitFiles(const std::wstring& extension) {
        file.extension = extension;
        for (const platform::DirectoryEntry& entry : entries) {
            if (HasExtension(entry.name, extension)) {
                file.baseName = BaseName(entry.name, extension);
                file.hasSettings = HasSettings();
                visit(file);
            }
        }
    }

    /// As `platform::HasExtension`, which is asked only when the extension is not spelled alike.
    bool HasExtension(const std::wstring& name, const std::wstring& extension) const {
        return name.ends_with(extension) || (ignoresCase && platform::HasExtension(name, extension));
    }

    static std::wstring_view BaseName(std::wstring_view name, std::wstring_view extension) {
        return name.substr(0, name.size() - extension.size());
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
        return platform::IdentityOf(PathFuncs::Join(file.root, directory));
    }

    const ScenarioFileVisitor& visit;
    const std::vector<std::wstring>& extensions;
    const bool ignoresCase = platform::SameName(L"a", L"A");
    /// Relative to the root, which is the empty text; grows during the search.
    std::vector<std::wstring> directories{std::wstring()};
    std::vector<platform::DirectoryEntry> entries;
    /// The names of the settings files among `entries`, without the extension, sorted.
    std::vector<std::wstring_view> settingsNames;
    /// The file that is visited. Its texts keep their memory for the next one.
    ScenarioFile file;
    std::vector<UnreadableDirectory> unreadable;
};

} // namespace

std::vector<UnreadableDirectory> VisitScenarioFiles(const ScenarioDirectory& directory,
                                                    const ScenarioFileVisitor& visit,
                                                    const std::vector<std::wstring>& extensions) {
    return Walk(directory, visit, extensions).Run();
}

std::vector<UnreadableDirectory> FindScenarioFiles(const ScenarioDirectory& directory, std::vector<ScenarioFile>& files,
                                                   const std::vector<std::wstring>& extensions) {
    const auto append = [&files](const ScenarioFile& file) { files.push_back(file); };
    return VisitScenarioFiles(directory, append, extensions);
}
