#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/files/FileSystem.h"
#include "services/Settings.h"

namespace settings {

/// What a look at the settings file has found: what is new since the last one.
struct Findings {
    /// Why the file cannot be used; empty if it can.
    std::wstring error;
    /// Parts of the file without effect.
    std::vector<std::wstring> warnings;
    /// Files that decide what runs, and that every user may change.
    std::vector<std::wstring> exposedFiles;
};

/// The settings in force, read again when their file has changed. Each operation replaces `findings` if it has read the
/// file. Threads: any.
class SettingsStore {
public:
    /// As `settings::UseFile`.
    void Use(const std::wstring& path);
    /// As `settings::Current`.
    std::shared_ptr<const Settings> Current(Findings& findings);
    /// As `settings::FrozenForProcess`.
    std::shared_ptr<const Settings> FrozenForProcess(Findings& findings);
    std::wstring FileInUse();
    std::wstring Problem(Findings& findings);

private:
    /// The settings file to read. If the user named it, it must exist.
    struct Place {
        std::wstring path;
        bool isNamed = false;
    };

    static Place DefaultPlace();
    static Place NamedPlace(const std::wstring& path);
    void FindPlace();
    void Update(Findings& findings);
    void Read(Findings& findings);

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

} // namespace settings
