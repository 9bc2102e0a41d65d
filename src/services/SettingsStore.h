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
struct Diagnostics {
    /// Why the file cannot be used; empty if it can.
    std::wstring error;
    /// Parts of the file without effect.
    std::vector<std::wstring> warnings;
    /// Files that decide what runs, and that every user may change.
    std::vector<std::wstring> exposedFiles;
};

/// The settings in force, read again when their file has changed. Each operation replaces `diagnostics` if it has read
/// the file. Threads: any.
class SettingsStore {
public:
    /// As `settings::UseFile`.
    void Use(const std::wstring& path);
    /// As `settings::Current`.
    std::shared_ptr<const Settings> Current(Diagnostics& diagnostics);
    /// As `settings::FrozenForProcess`.
    std::shared_ptr<const Settings> FrozenForProcess(Diagnostics& diagnostics);
    std::wstring FileInUse();
    std::wstring Problem(Diagnostics& diagnostics);

private:
    /// The settings file to read. If the user named it, it must exist.
    struct Source {
        std::wstring path;
        bool isNamed = false;
    };

    static Source DefaultSource();
    static Source NamedSource(const std::wstring& path);
    void FindSource();
    void Update(Diagnostics& diagnostics);
    void Read(Diagnostics& diagnostics);

    std::mutex mutex;
    std::optional<Source> source;
    std::shared_ptr<const Settings> current;
    /// Settings frozen for the life of this process.
    std::shared_ptr<const Settings> frozen;
    /// The state of the file that was read last; nothing if it did not exist.
    std::optional<platform::FileStamp> stamp;
    bool hasLooked = false;
    std::wstring problem;
};

} // namespace settings
