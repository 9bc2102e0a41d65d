#include "services/Settings.h"

#include <mutex>
#include <optional>
#include <utility>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "platform/system/NeverDestroyed.h"
#include "services/SettingsExposure.h"
#include "services/SettingsFile.h"
#include "services/log/LogFile.h"

namespace settings {
namespace {

/// The settings file to read. If the user named it, it must exist.
struct Place {
    std::wstring path;
    bool isNamed = false;
};

Place DefaultPlace() {
    const std::wstring named = platform::GetEnvironment(L"CONTROLLER_SETTINGS_FILE").value_or(std::wstring());
    if (!named.empty()) {
        return {platform::ResolveAgainst(platform::CurrentDirectory(), named), true};
    }
    const std::wstring directory = platform::UserConfigurationDirectory();
    if (directory.empty()) {
        return {};
    }
    return {directory + L'\\' + platform::applicationDirectoryName + L"\\settings.json", false};
}

Place NamedPlace(const std::wstring& path) {
    return {platform::ResolveAgainst(platform::CurrentDirectory(), path), true};
}

/// Log messages to write after the lock is released, because the log itself reads the settings.
struct Findings {
    std::wstring error;
    std::vector<std::wstring> warnings;
    std::vector<std::wstring> exposedFiles;
};

void Report(const Findings& findings) {
    if (!findings.error.empty()) {
        ControllerCSWrapper::WriteErrorLog(L"The settings are not usable, those from before stay in force: " +
                                           findings.error);
    }
    for (const std::wstring& warning : findings.warnings) {
        ControllerCSWrapper::WriteWarnLog(L"A part of the settings has no effect: " + warning);
    }
    for (const std::wstring& file : findings.exposedFiles) {
        ControllerCSWrapper::WriteWarnLog(
            L"Everybody may change " + platform::ToNativeText(file) +
            L", and so decide what runs in your name: take the right to write from others");
    }
}

/// Restores one member from `held`.
template <typename Value>
void HoldMember(const wchar_t* name, Value Settings::*member, const Settings& held, Settings& read,
                std::vector<std::wstring>& warnings) {
    if (read.*member != held.*member) {
        warnings.push_back(platform::ToNativeText(read.file) + L": " + name +
                           L": a change takes effect with the next start");
        read.*member = held.*member;
    }
}

void HoldMembers(const Settings& held, Settings& read, std::vector<std::wstring>& warnings) {
    HoldMember(L"jobListFile", &Settings::jobListFile, held, read, warnings);
    HoldMember(L"logFile", &Settings::logFile, held, read, warnings);
    HoldMember(L"functionModules", &Settings::functionModules, held, read, warnings);
    HoldMember(L"libraryDirectories", &Settings::libraryDirectories, held, read, warnings);
    HoldMember(L"eventTransmitter", &Settings::eventTransmitter, held, read, warnings);
    HoldMember(L"transmitterName", &Settings::transmitterName, held, read, warnings);
}

class Store {
public:
    void Use(const std::wstring& path) {
        const std::lock_guard<std::mutex> lock(mutex);
        place = path.empty() ? std::optional<Place>() : NamedPlace(path);
        hasLooked = false;
        current.reset();
        held.reset();
        problem.clear();
    }

    std::shared_ptr<const Settings> FrozenForProcess(Findings& findings) {
        const std::lock_guard<std::mutex> lock(mutex);
        Update(findings);
        held = current;
        return current;
    }

    std::shared_ptr<const Settings> Current(Findings& findings) {
        const std::lock_guard<std::mutex> lock(mutex);
        Update(findings);
        return current;
    }

    std::wstring FileInUse() {
        const std::lock_guard<std::mutex> lock(mutex);
        FindPlace();
        return place->path;
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
        FindPlace();
        Look(findings);
        log_file::UseLevel(current->logLevel);
    }

    void FindPlace() {
        if (!place) {
            place = DefaultPlace();
        }
    }

    void Look(Findings& findings) {
        const std::optional<platform::FileStamp> newStamp = platform::StampOf(place->path);
        const bool isNew = !hasLooked || newStamp != stamp;
        // A file that could not be opened is tried again even if its time stamp has not changed.
        if (!isNew && problem.empty()) {
            return;
        }
        hasLooked = true;
        stamp = newStamp;
        const std::wstring known = std::exchange(problem, {});
        Findings found;
        Read(found);
        if (isNew || problem != known) {
            found.error = problem;
            findings = std::move(found);
        }
    }

    void Read(Findings& findings) {
        if (!stamp && !place->isNamed && current->file.empty()) {
            return;
        }
        Settings read;
        if (ReadSettingsFile(place->path, read, problem, findings.warnings)) {
            if (held) {
                HoldMembers(*held, read, findings.warnings);
            }
            current = std::make_shared<const Settings>(std::move(read));
            findings.exposedFiles = ExposedFiles(*current);
        }
    }

    std::mutex mutex;
    std::optional<Place> place;
    std::shared_ptr<const Settings> current;
    /// Settings frozen for the life of this process.
    std::shared_ptr<const Settings> held;
    /// The state of the file that was read last; nothing if it did not exist.
    std::optional<platform::FileStamp> stamp;
    bool hasLooked = false;
    std::wstring problem;
};

/// Never destroyed: the log may read its path from destructors that run at the end of the process.
Store& TheStore() {
    static Store& store = platform::MakeNeverDestroyed<Store>();
    return store;
}

} // namespace

void UseFile(const std::wstring& path) {
    TheStore().Use(path);
    log_file::ForgetDefaultPath();
    log_file::ForgetLevel();
}

std::shared_ptr<const Settings> Current() {
    Findings findings;
    std::shared_ptr<const Settings> current = TheStore().Current(findings);
    Report(findings);
    return current;
}

std::shared_ptr<const Settings> FrozenForProcess() {
    Findings findings;
    std::shared_ptr<const Settings> current = TheStore().FrozenForProcess(findings);
    Report(findings);
    return current;
}

std::wstring FileInUse() {
    return TheStore().FileInUse();
}

std::wstring Problem() {
    Findings findings;
    std::wstring problem = TheStore().Problem(findings);
    Report(findings);
    return problem;
}

} // namespace settings
