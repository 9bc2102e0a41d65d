#include "fuzz/support/Scratch.h"

#include "fuzz/support/Require.h"
#include "platform/files/File.h"
#include "platform/files/FileSystem.h"
#include "services/Settings.h"

namespace fuzz {
namespace {

/// A directory with its settings.
class QuietDirectory {
public:
    QuietDirectory() {
        const std::wstring settingsFile = directory / L"scratch_settings.json";
        WriteTextFile(settingsFile, R"({"logFile":"","jobListFile":"list/job_list.json"})");
        settings::UseFile(settingsFile);
        Require(settings::Problem().empty(), "the settings of the fuzzers are in force");
    }

    const TemporaryDirectory& Directory() const { return directory; }

private:
    TemporaryDirectory directory;
};

} // namespace

const TemporaryDirectory& Scratch() {
    static const QuietDirectory quiet;
    return quiet.Directory();
}

std::wstring ScratchFile(const std::wstring& name, std::string_view bytes) {
    const std::wstring path = Scratch() / name;
    // Left by the previous input; if removal fails, the next line fails.
    (void)platform::RemoveFile(path);
    platform::File file;
    Require(file.CreateNew(path, {}) && file.Write(bytes), "the scratch folder can be written");
    return path;
}

} // namespace fuzz
