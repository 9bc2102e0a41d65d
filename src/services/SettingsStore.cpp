#include "services/SettingsStore.h"

#include <utility>

#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "services/SettingsExposure.h"
#include "services/SettingsFile.h"

namespace settings {
namespace {

/// Restores one member from `frozen`.
template <typename Value>
void KeepFrozenMember(const wchar_t* name, Value Settings::*member, const Settings& frozen, Settings& read,
                      std::vector<std::wstring>& warnings) {
    if (read.*member != frozen.*member) {
        warnings.push_back(platform::ToNativeText(read.file) + L": " + name +
                           L": a change takes effect with the next start");
        read.*member = frozen.*member;
    }
}

void KeepFrozenMembers(const Settings& frozen, Settings& read, std::vector<std::wstring>& warnings) {
    KeepFrozenMember(L"jobListFile", &Settings::jobListFile, frozen, read, warnings);
    KeepFrozenMember(L"logFile", &Settings::logFile, frozen, read, warnings);
    KeepFrozenMember(L"functionModules", &Settings::functionModules, frozen, read, warnings);
    KeepFrozenMember(L"libraryDirectories", &Settings::libraryDirectories, frozen, read, warnings);
    KeepFrozenMember(L"eventTransmitter", &Settings::eventTransmitter, frozen, read, warnings);
    KeepFrozenMember(L"transmitterName", &Settings::transmitterName, frozen, read, warnings);
}

} // namespace

SettingsStore::Source SettingsStore::DefaultSource() {
    const std::wstring named = platform::GetEnvironment(L"CONTROLLER_SETTINGS_FILE").value_or(std::wstring());
    if (!named.empty()) {
        return NamedSource(named);
    }
    const std::wstring directory = platform::UserConfigurationDirectory();
    if (directory.empty()) {
        return {};
    }
    return {directory + L'\\' + platform::applicationDirectoryName + L"\\settings.json", false};
}

SettingsStore::Source SettingsStore::NamedSource(const std::wstring& path) {
    return {platform::ResolveAgainst(platform::CurrentDirectory(), path), true};
}

void SettingsStore::Use(const std::wstring& path) {
    const std::lock_guard<std::mutex> lock(mutex);
    source = path.empty() ? std::optional<Source>() : NamedSource(path);
    hasLooked = false;
    current.reset();
    frozen.reset();
    problem.clear();
}

std::shared_ptr<const Settings> SettingsStore::FrozenForProcess(Diagnostics& diagnostics) {
    const std::lock_guard<std::mutex> lock(mutex);
    Update(diagnostics);
    frozen = current;
    return current;
}

std::shared_ptr<const Settings> SettingsStore::Current(Diagnostics& diagnostics) {
    const std::lock_guard<std::mutex> lock(mutex);
    Update(diagnostics);
    return current;
}

std::wstring SettingsStore::FileInUse() {
    const std::lock_guard<std::mutex> lock(mutex);
    FindSource();
    return source->path;
}

std::wstring SettingsStore::Problem(Diagnostics& diagnostics) {
    const std::lock_guard<std::mutex> lock(mutex);
    Update(diagnostics);
    return problem;
}

void SettingsStore::FindSource() {
    if (!source) {
        source = DefaultSource();
    }
}

void SettingsStore::Update(Diagnostics& diagnostics) {
    if (!current) {
        current = std::make_shared<const Settings>(BuiltInSettings());
    }
    FindSource();
    const std::optional<platform::FileStamp> newStamp = platform::StampOf(source->path);
    const bool isNew = !hasLooked || newStamp != stamp;
    // A file that could not be opened is tried again even if its time stamp has not changed.
    if (!isNew && problem.empty()) {
        return;
    }
    hasLooked = true;
    stamp = newStamp;
    const std::wstring known = std::exchange(problem, {});
    Diagnostics found;
    Read(found);
    if (isNew || problem != known) {
        found.error = problem;
        diagnostics = std::move(found);
    }
}

void SettingsStore::Read(Diagnostics& diagnostics) {
    if (!stamp && !source->isNamed && current->file.empty()) {
        return;
    }
    Settings read;
    if (ReadSettingsFile(source->path, read, problem, diagnostics.warnings)) {
        if (frozen) {
            KeepFrozenMembers(*frozen, read, diagnostics.warnings);
        }
        current = std::make_shared<const Settings>(std::move(read));
        diagnostics.exposedFiles = ExposedFiles(*current);
    }
}

} // namespace settings
