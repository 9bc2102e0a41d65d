#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "formats/json/SchedulingLayouts.h"
#include "formats/json/Writing.h"
#include "fuzz/support/ByteSource.h"
#include "fuzz/support/Require.h"
#include "fuzz/support/Scratch.h"
#include "platform/files/NativePath.h"
#include "services/Settings.h"
#include "services/SettingsFile.h"
#include "text/StrictUtf8.h"

namespace {

using settings::Settings;

constexpr std::size_t mostWarnings = 20;

bool ReadFile(std::string_view bytes, Settings& read) {
    Settings before;
    before.workDirectory = L"before";
    before.interpreters = {{L".x", {L"x"}}};
    std::wstring problem;
    std::vector<std::wstring> warnings = {L"before"};
    read = before;
    const bool isRead = settings::ReadSettingsFile(fuzz::ScratchFile(L"settings.json", bytes), read, problem, warnings);
    fuzz::Require(isRead || read == before, "a refused file leaves the settings as they were");
    fuzz::Require(isRead == problem.empty(), "a refusal, and nothing else, says why");
    fuzz::Require(warnings.at(0) == L"before" && warnings.size() <= 1 + mostWarnings, "few warnings are appended");
    return isRead;
}

void CheckPath(const std::wstring& path) {
    fuzz::Require(platform::IsAbsolute(path), "a path of the settings is absolute");
}

void CheckPaths(const Settings& read) {
    for (const auto& path : {read.workDirectory, read.jobListFile, read.eventTransmitter, read.stringResourceFile,
                             read.scenarioRunner, read.scenarioApiDirectory}) {
        CheckPath(path);
    }
    fuzz::Require(read.logFile.empty() || platform::IsAbsolute(read.logFile), "the log file is absolute");
    std::for_each(read.functionModules.begin(), read.functionModules.end(), CheckPath);
    std::for_each(read.web.inputDirectories.begin(), read.web.inputDirectories.end(), CheckPath);
    for (const ScenarioDirectory& directory : read.scenarioDirectories) {
        fuzz::Require(directory.path.empty() || platform::IsAbsolute(directory.path), "a scenario folder is absolute");
    }
}

void CheckLimits(const Settings& read) {
    fuzz::Require(read.autoDeleteWorkFolder.days >= 1 && read.autoDeleteWorkFolder.days <= 36500,
                  "the days are within their limits");
    fuzz::Require(read.parallelJobs >= 1 && read.parallelJobs <= settings::mostParallelJobs,
                  "the number of jobs is within its limits");
    fuzz::Require(read.cancelGraceSeconds >= 0 && read.cancelGraceSeconds <= 3600, "the grace is within its limits");
    fuzz::Require(read.scenarioLogLimitBytes >= 4096 && read.scenarioLogLimitBytes <= 1073741824, "the log is limited");
    fuzz::Require(read.web.port >= 0 && read.web.port <= 65535, "the port is a port");
    fuzz::Require(!read.culture.empty() && !read.defaultCulture.empty() && !read.transmitterName.empty(),
                  "what must have a name has one");
    for (const auto& [extension, command] : read.interpreters) {
        fuzz::Require(extension.starts_with(L'.') && !command.empty() && !command[0].empty(),
                      "an interpreter is a program for an extension");
    }
}

/// Members of a settings file, as text.
class Writer {
public:
    template <typename Value>
    void Add(std::wstring_view name, const Value& value) {
        json += json.size() > 1 ? L"," : L"";
        json::AppendName(name, json);
        json::Append(value, json);
    }

    void AddHooks(const settings::HookCommands& hooks) {
        Writer object;
        object.Add(L"jobEnded", hooks.jobEnded);
        object.Add(L"jobFailed", hooks.jobFailed);
        object.Add(L"queueEmpty", hooks.queueEmpty);
        json += L",\"hooks\":" + object.Finished();
    }

    template <typename Value>
    void AddMap(const std::wstring& name, const std::map<std::wstring, Value>& values) {
        Writer object;
        for (const auto& [key, value] : values) {
            object.Add(key, value);
        }
        json += L",\"" + name + L"\":" + object.Finished();
    }

    void AddWeb(const settings::WebSettings& web) {
        Writer object;
        object.Add(L"port", web.port);
        object.Add(L"readOnly", web.readOnly);
        object.Add(L"publicAddress", web.publicAddress);
        object.Add(L"inputDirectories", web.inputDirectories);
        json += L",\"web\":" + object.Finished();
    }

    void AddAutoDelete(bool enabled, std::int32_t days) {
        Writer object;
        object.Add(L"enabled", enabled);
        object.Add(L"days", days);
        json += L",\"autoDeleteWorkFolder\":" + object.Finished();
    }

    std::wstring Finished() const { return json + L"}"; }

private:
    std::wstring json = L"{";
};

std::wstring NameOf(settings::AfterRestart rule) {
    using Rule = settings::AfterRestart;
    return rule == Rule::Cancel ? L"cancel" : rule == Rule::Queued ? L"queued" : L"all";
}

std::wstring Written(const Settings& read) {
    Writer writer;
    writer.Add(L"workDirectory", read.workDirectory);
    writer.Add(L"jobListFile", read.jobListFile);
    writer.Add(L"logFile", read.logFile);
    writer.Add(L"logLevel", std::wstring(log_file::NameOf(read.logLevel)));
    writer.Add(L"scenarioDirectories", read.scenarioDirectories);
    writer.Add(L"culture", read.culture);
    writer.Add(L"defaultCulture", read.defaultCulture);
    writer.Add(L"functionModules", read.functionModules);
    writer.Add(L"eventTransmitter", read.eventTransmitter);
    writer.Add(L"transmitterName", read.transmitterName);
    writer.Add(L"stringResourceFile", read.stringResourceFile);
    writer.Add(L"scenarioRunner", read.scenarioRunner);
    writer.Add(L"scenarioApiDirectory", read.scenarioApiDirectory);
    writer.Add(L"cancelGraceSeconds", read.cancelGraceSeconds);
    writer.Add(L"parallelJobs", read.parallelJobs);
    writer.Add(L"scenarioLogLimitBytes", read.scenarioLogLimitBytes);
    writer.AddAutoDelete(read.autoDeleteWorkFolder.enabled, read.autoDeleteWorkFolder.days);
    writer.AddMap(L"interpreters", read.interpreters);
    writer.Add(L"libraryDirectories", read.libraryDirectories);
    writer.AddHooks(read.hooks);
    writer.AddMap(L"resources", read.resources);
    writer.Add(L"ageingMinutes", read.ageingMinutes);
    writer.Add(L"afterRestart", NameOf(read.afterRestart));
    writer.Add(L"provenance", read.provenance);
    writer.Add(L"reuse", read.reuse);
    writer.AddMap(L"toolVersions", read.toolVersions);
    writer.Add(L"jobDefaults", read.jobDefaults);
    writer.AddWeb(read.web);
    return writer.Finished();
}

/// Settings that were read can be written and are read back equal. Exceptions: paths that are too long after they were
/// resolved, directories without a path, and the options of a cluster, which are not written.
void CheckWritten(const Settings& read) {
    std::string utf8;
    std::size_t badAt = 0;
    Settings again;
    fuzz::Require(text::EncodeUtf8(Written(read), utf8, badAt), "JSON is characters");
    if (ReadFile(utf8, again)) {
        again.slurm = read.slurm;
        fuzz::Require(again == read, "settings are read as they were written");
    }
}

} // namespace

/// Reads the input as a settings file. The settings in force stay usable whatever it contains.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Settings read;
    if (ReadFile(fuzz::BytesOf(data, size), read)) {
        CheckPaths(read);
        CheckLimits(read);
        CheckWritten(read);
    }
    return 0;
}
