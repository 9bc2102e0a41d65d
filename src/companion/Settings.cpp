#include "companion/Settings.h"

#include <mutex>
#include <optional>
#include <utility>

#include "companion/ControllerCSWrapper.h"
#include "companion/SettingsFile.h"
#include "companion/log/LogFile.h"
#include "platform/Directories.h"
#include "platform/Environment.h"
#include "platform/FileSystem.h"
#include "platform/NativePath.h"

namespace settings {
namespace {

/// The file to read, and whether somebody has named it: then it must be there.
struct Place {
    std::wstring path;
    bool isNamed = false;
};

Place DefaultPlace() {
    const std::wstring named = platform::GetEnvironment(L"CONTROLLER_SETTINGS_FILE").value_or(L"");
    if (!named.empty()) {
        return {platform::ResolveAgainst(platform::CurrentFolder(), named), true};
    }
    const std::wstring folder = platform::UserConfigurationFolder();
    if (folder.empty()) {
        return {};
    }
    return {folder + L'\\' + platform::applicationFolderName + L"\\settings.json", false};
}

Place NamedPlace(const std::wstring& path) {
    return {platform::ResolveAgainst(platform::CurrentFolder(), path), true};
}

/// What is to be told once the lock is released: the log asks for the settings itself.
struct Findings {
    std::wstring error;
    std::vector<std::wstring> warnings;
};

void Report(const Findings& findings) {
    if (!findings.error.empty()) {
        ControllerCSWrapper::WriteErrorLog(L"The settings are not usable, those from before stay in force: " +
                                           findings.error);
    }
    for (const std::wstring& warning : findings.warnings) {
        ControllerCSWrapper::WriteWarnLog(L"A part of the settings has no effect: " + warning);
    }
}

class Store {
public:
    void Use(const std::wstring& path) {
        const std::lock_guard<std::mutex> lock(mutex);
        place = path.empty() ? std::optional<Place>() : NamedPlace(path);
        hasLooked = false;
        current.reset();
    }

    std::shared_ptr<const Settings> Current(Findings& findings) {
        const std::lock_guard<std::mutex> lock(mutex);
        Update(findings);
        return current;
    }

    std::wstring Problem(Findings& findings) {
        const std::lock_guard<std::mutex> lock(mutex);
        Update(findings);
        return problem;
    }

private:
    void Update(Findings& findings) {
        if (!current) {
            current = std::make_shared<const Settings>(BuiltInSettings());
        }
        if (!place) {
            place = DefaultPlace();
        }
        const std::optional<platform::FileStamp> newStamp = platform::StampOf(place->path);
        if (hasLooked && newStamp == stamp) {
            return;
        }
        hasLooked = true;
        stamp = newStamp;
        Read(findings);
        findings.error = problem;
    }

    void Read(Findings& findings) {
        problem.clear();
        if (!stamp && !place->isNamed && current->file.empty()) {
            return;
        }
        Settings read;
        if (ReadSettingsFile(place->path, read, problem, findings.warnings)) {
            current = std::make_shared<const Settings>(std::move(read));
        }
    }

    std::mutex mutex;
    std::optional<Place> place;
    std::shared_ptr<const Settings> current;
    /// The state of the file that was read last; nothing when it was missing.
    std::optional<platform::FileStamp> stamp;
    bool hasLooked = false;
    std::wstring problem;
};

/// Never destroyed: the log may ask for its path from other people's destructors.
Store& TheStore() {
    static Store& store = *std::make_unique<Store>().release();
    return store;
}

} // namespace

void UseFile(const std::wstring& path) {
    TheStore().Use(path);
    log_file::ForgetDefaultPath();
}

std::shared_ptr<const Settings> Current() {
    Findings findings;
    std::shared_ptr<const Settings> current = TheStore().Current(findings);
    Report(findings);
    return current;
}

std::wstring Problem() {
    Findings findings;
    std::wstring problem = TheStore().Problem(findings);
    Report(findings);
    return problem;
}

} // namespace settings
