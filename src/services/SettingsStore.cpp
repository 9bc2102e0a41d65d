#include "services/SettingsStore.h"

#include <utility>

#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "services/SettingsExposure.h"
#include "services/SettingsFile.h"

namespace settings {
namespace {

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

} // namespace

SettingsStore::Place SettingsStore::DefaultPlace() {
    const std::wstring named = platform::GetEnvironment(L"CONTROLLER_SETTINGS_FILE").value_or(std::wstring());
    if (!named.empty()) {
        return NamedPlace(named);
    }
    const std::wstring directory = platform::UserConfigurationDirectory();
    if (directory.empty()) {
        return {};
    }
    return {directory + L'\\' + platform::applicationDirectoryName + L"\\settings.json", false};
}

SettingsStore::Place SettingsStore::NamedPlace(const std::wstring& path) {
    return {platform::ResolveAgainst(platform::CurrentDirectory(), path), true};
}

void SettingsStore::Use(const std::wstring& path) {
    const std::lock_guard<std::mutex> lock(mutex);
    place = path.empty() ? std::optional<Place>() : NamedPlace(path);
    hasLooked = false;
    current.reset();
    held.reset();
    problem.clear();
}

std::shared_ptr<const Settings> SettingsStore::FrozenForProcess(Findings& findings) {
    const std::lock_guard<std::mutex> lock(mutex);
    Update(findings);
    held = current;
    return current;
}

std::shared_ptr<const Settings> SettingsStore::Current(Findings& findings) {
    const std::lock_guard<std::mutex> lock(mutex);
    Update(findings);
    return current;
}

std::wstring SettingsStore::FileInUse() {
    const std::lock_guard<std::mutex> lock(mutex);
    FindPlace();
    return place->path;
}

std::wstring SettingsStore::Problem(Findings& findings) {
    const std::lock_guard<std::mutex> lock(mutex);
    Update(findings);
    return problem;
}

void SettingsStore::FindPlace() {
    if (!place) {
        place = DefaultPlace();
    }
}

void SettingsStore::Update(Findings& findings) {
    if (!current) {
        current = std::make_shared<const Settings>(BuiltInSettings());
    }
    FindPlace();
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

void SettingsStore::Read(Findings& findings) {
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

} // namespace settings
