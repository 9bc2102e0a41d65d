#include "services/SettingsFile.h"

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "platform/files/NativePath.h"
#include "platform/system/Environment.h"
#include "text/Text.h"

using settings::Settings;

namespace {

class SettingsFileTest : public testing::Test {
protected:
    bool Read(const std::string& text) {
        WriteTextFile(path, text);
        return settings::ReadSettingsFile(path, read, problem, warnings);
    }

    const TemporaryDirectory directory;
    const std::wstring path = directory / L"conf\\settings.json";
    Settings read;
    std::wstring problem;
    std::vector<std::wstring> warnings;
};

struct Refused {
    std::string name;
    std::string text;
    /// After the name of the file.
    std::wstring problem;
};

std::ostream& operator<<(std::ostream& stream, const Refused& refused) {
    return stream << refused.name;
}

class SettingsFileTest_Refused : public SettingsFileTest, public testing::WithParamInterface<Refused> {};

const std::vector<Refused> refusedFiles = {
    {"EmptyFile", "", L", line 1, column 1: not JSON: "},
    {"NotJson", "{\n  \"culture\": en-US\n}", L", line 2, column 14: not JSON: "},
    {"List", "[]", L", line 1, column 1: expected an object, found a list"},
    {"NewerVersion", R"({"version":2})", L", line 1, column 12: version: expected version 1"},
    {"NegativeRetries", R"({"jobDefaults":{"retries":-1}})",
     L"jobDefaults.retries: expected a whole number from 0 to 100"},
    {"WrongType", R"({"workDirectory":7})", L", line 1, column 18: workDirectory: expected a path"},
    {"EmptyPath", R"({"workDirectory":""})", L", line 1, column 18: workDirectory: expected a path"},
    {"PathWithLineBreak", R"({"jobListFile":"a\nb"})", L": jobListFile: expected a path"},
    {"LongPath", R"({"scenarioRunner":")" + std::string(4097, 'a') + "\"}", L": scenarioRunner: expected a path"},
    {"RepeatedMember", R"({"culture":"de-DE","culture":"de-DE"})", L"the member \"culture\" is repeated"},
    {"CultureWithSeparator", R"({"culture":"..\\de"})", L": culture: expected the name of a culture"},
    {"TransmitterNameWithSeparator", R"({"transmitterName":"a/b"})",
     L": transmitterName: expected a name of 1 to 64 letters"},
    {"UnknownLogLevel", R"({"logLevel":"verbose"})",
     L": logLevel: expected \"debug\", \"info\", \"warning\" or \"error\""},
    {"LogLevelAsNumber", R"({"logLevel":1})", L": logLevel: expected \"debug\""},
    {"NoDays", R"({"autoDeleteWorkFolder":{"enabled":true,"days":0}})",
     L", line 1, column 48: autoDeleteWorkFolder.days: expected a whole number of days from 1 to 36500"},
    {"DaysAsText", R"({"autoDeleteWorkFolder":{"days":"30"}})", L": autoDeleteWorkFolder.days: expected a whole"},
    {"EnabledAsNumber", R"({"autoDeleteWorkFolder":{"enabled":1}})",
     L": autoDeleteWorkFolder.enabled: expected true or false"},
    {"NegativeGrace", R"({"cancelGraceSeconds":-1})",
     L": cancelGraceSeconds: expected a whole number of seconds from 0 to 3600, found -1"},
    {"FractionOfASecond", R"({"cancelGraceSeconds":0.5})", L": cancelGraceSeconds: expected a whole number"},
    {"LongGrace", R"({"cancelGraceSeconds":3601})", L": cancelGraceSeconds: expected a whole number"},
    {"NoJobAtATime", R"({"parallelJobs":0})",
     L": parallelJobs: expected a whole number of jobs from 1 to 500 (on Windows to 60), or"},
    {"MoreJobsThanAreWaitedFor", R"({"parallelJobs":501})", L": parallelJobs: expected a whole number of jobs"},
    {"NoCpus", R"({"slurm":{"cpus":0}})", L": slurm.cpus: expected a whole number of CPUs from 1 to 4096"},
    {"AProgramBesideSrun", R"({"slurm":{"options":["--qos=a","--prolog=/x"]}})",
     L": slurm.options[1]: expected --NAME or"},
    {"ContradictoryMemory", R"({"slurm":{"memoryMegabytes":5,"options":["--mem-per-cpu=5"]}})",
     L": slurm.options[0]: expected no other amount of memory"},
    {"JobsAsAnotherWord", R"({"parallelJobs":"all"})", L": parallelJobs: expected a whole number of jobs"},
    {"NoneOfAResource", R"({"resources":{"cad":0}})", L": resources.cad: expected a whole number of at least 1"},
    {"ResourceWithBlank", R"({"resources":{"a cad":1}})", L": expected as its name 1 to 64 letters"},
    {"NoAgeing", R"({"ageingMinutes":0})", L": ageingMinutes: expected a whole number of minutes"},
    {"AnotherAfterRestart", R"({"afterRestart":"some"})", L": afterRestart: expected \"cancel\", \"queued\" or"},
    {"ToolWithBlank", R"({"toolVersions":{"a tool":"1"}})", L": expected as its name 1 to 64 letters"},
    {"PortBeyond16Bits", R"({"web":{"port":65536}})", L": web.port: expected a port from 1 to 65535, or 0"},
    {"WebAddressWithoutScheme", R"({"web":{"publicAddress":"jobs.example.org"}})",
     L": web.publicAddress: expected an address such as"},
    {"SmallLog", R"({"scenarioLogLimitBytes":4095})", L": scenarioLogLimitBytes: expected a whole number of bytes"},
    {"LargeLog", R"({"scenarioLogLimitBytes":1073741825})", L": scenarioLogLimitBytes: expected a whole number"},
    {"DirectoryWithoutPath", R"({"scenarioDirectories":[{"label":"x"}]})",
     L": scenarioDirectories[0]: the member \"path\" is missing"},
    {"DirectoryAsText", R"({"scenarioDirectories":["scenarios"]})",
     L": scenarioDirectories[0]: expected an object, found text"},
    {"ModulesAsText", R"({"functionModules":"local_process.so"})", L": functionModules: expected a list, found text"},
    {"EmptyModule", R"({"functionModules":["a.so",""]})", L": functionModules[1]: expected a path"},
    {"EmptyLibraryDirectory", R"({"libraryDirectories":[""]})", L": libraryDirectories[0]: expected a path"},
    {"ExtensionWithoutDot", R"({"interpreters":{"rb":["ruby"]}})",
     L": expected as its name an extension with the dot, such as \".rb\""},
    {"ExtensionWithSeparator", R"({"interpreters":{"./rb":["ruby"]}})", L": expected as its name an extension"},
    {"CommandAsText", R"({"interpreters":{".rb":"ruby"}})", L": expected a list, found text"},
    {"EmptyCommand", R"({"interpreters":{".rb":[]}})", L": interpreters.rb: expected a list that begins"},
    {"EmptyCommandPart", R"({"interpreters":{".rb":[""]}})", L": expected a program or argument"},
    {"HooksAsList", R"({"hooks":[]})", L", line 1, column 10: hooks: expected an object, found a list"},
    {"HookAsText", R"({"hooks":{"jobEnded":"mail"}})", L": hooks.jobEnded: expected a list, found text"},
    {"EmptyHookProgram", R"({"hooks":{"jobFailed":[""]}})",
     L": hooks.jobFailed[0]: expected a program or argument of 1 to 4096 characters"},
    {"HookArgumentWithLineBreak", R"({"hooks":{"queueEmpty":["a","b\nc"]}})",
     L": hooks.queueEmpty[1]: expected a program or argument"},
    {"HookArgumentAsNumber", R"({"hooks":{"queueEmpty":["a",1]}})", L": hooks.queueEmpty[1]: expected a program"},
    {"TooLarge", std::string((1 << 20) + 1, ' '), L"(at most 1048576 bytes)"},
};

std::string TestName(const testing::TestParamInfo<Refused>& info) {
    return info.param.name;
}

} // namespace

TEST_P(SettingsFileTest_Refused, NamesFilePlaceMemberAndWhatWasExpected) {
    read.culture = L"as before";
    EXPECT_FALSE(Read(GetParam().text));
    EXPECT_EQ(problem.find(platform::ToNativeText(path)), 0u) << text::ToUtf8(problem);
    EXPECT_NE(problem.find(GetParam().problem), std::wstring::npos) << text::ToUtf8(problem);
    EXPECT_EQ(read.culture, L"as before");
}

INSTANTIATE_TEST_SUITE_P(Files, SettingsFileTest_Refused, testing::ValuesIn(refusedFiles), TestName);

TEST_F(SettingsFileTest, LeavesTheBuiltInSettingsWhereNothingIsSaid) {
    ASSERT_TRUE(Read("{}")) << text::ToUtf8(problem);
    Settings expected = settings::BuiltInSettings();
    expected.file = path;
    EXPECT_EQ(read, expected);
}

TEST_F(SettingsFileTest, TakesEveryMember) {
    ASSERT_TRUE(Read(
        R"({"version":1,"workDirectory":"work","jobListFile":"lists/job_list.json","logFile":"c.log","logLevel":"warning",
        "autoDeleteWorkFolder":{"enabled":true,"days":7},
        "scenarioDirectories":[{"path":"scenarios","label":"Ours"},{"path":"../common"}],
        "culture":"de-DE","defaultCulture":"fr","functionModules":["../bin/one.so","two.so"],"libraryDirectories":["../cad"],
        "eventTransmitter":"../bin/line.so","transmitterName":"ours-1","stringResourceFile":"texts.json",
        "scenarioRunner":"../bin/runner","scenarioApiDirectory":"api",
        "interpreters":{".rb":["ruby","--disable=gems"],".py":["python3"]},
        "cancelGraceSeconds":0,"scenarioLogLimitBytes":4096,"parallelJobs":60,
        "hooks":{"jobEnded":["notify","--end"],"jobFailed":["/bin/mail"],"queueEmpty":[]},
        "resources":{"cadLicence":2},"ageingMinutes":5,"afterRestart":"all",
        "provenance":false,"reuse":true,"toolVersions":{"mesher":"2.1"},
        "jobDefaults":{"retries":2,"retryDelay":"30s","timeLimit":"8h","memoryLimitMiB":4000,"cpuLimitPercent":150},
        "web":{"port":8080,"readOnly":true,"publicAddress":"https://jobs.example.org/a/","inputDirectories":["parts"]},
        "slurm":{"partition":"main","cpus":2,"options":["--qos=low"],"lostAfterSeconds":30}})"))
        << text::ToUtf8(problem);
    Settings expected;
    expected.file = path;
    expected.workDirectory = directory / L"conf\\work";
    expected.jobListFile = directory / L"conf\\lists\\job_list.json";
    expected.logFile = directory / L"conf\\c.log";
    expected.logLevel = log_file::Level::Warning;
    expected.autoDeleteWorkFolder = {true, 7};
    expected.scenarioDirectories = {{directory / L"conf\\scenarios", L"Ours"}, {directory / L"common", L""}};
    expected.culture = L"de-DE";
    expected.defaultCulture = L"fr";
    expected.functionModules = {directory / L"bin\\one.so", directory / L"conf\\two.so"};
    expected.libraryDirectories = {directory / L"cad"};
    expected.eventTransmitter = directory / L"bin\\line.so";
    expected.transmitterName = L"ours-1";
    expected.stringResourceFile = directory / L"conf\\texts.json";
    expected.scenarioRunner = directory / L"bin\\runner";
    expected.scenarioApiDirectory = directory / L"conf\\api";
    expected.interpreters = {{L".rb", {L"ruby", L"--disable=gems"}}, {L".py", {L"python3"}}};
    expected.cancelGraceSeconds = 0;
    expected.parallelJobs = 60;
    expected.scenarioLogLimitBytes = 4096;
    expected.resources = {{L"cadLicence", 2}};
    expected.slurm.partition = L"main";
    expected.slurm.cpus = 2;
    expected.slurm.options = {L"--qos=low"};
    expected.slurm.lostAfterSeconds = 30;
    expected.ageingMinutes = 5;
    expected.afterRestart = settings::AfterRestart::All;
    expected.provenance = false;
    expected.reuse = true;
    expected.jobDefaults.retries = 2;
    expected.jobDefaults.retryDelay = 30;
    expected.jobDefaults.timeLimit = 28800;
    expected.jobDefaults.memoryLimitMiB = 4000;
    expected.jobDefaults.cpuLimitPercent = 150;
    expected.toolVersions = {{L"mesher", L"2.1"}};
    expected.web = {8080, true, L"https://jobs.example.org/a/", {directory / L"conf\\parts"}};
    expected.hooks = {{L"notify", L"--end"}, {L"/bin/mail"}, {}};
    EXPECT_TRUE(read == expected);
    EXPECT_TRUE(warnings.empty());
}

TEST_F(SettingsFileTest, KeepsAbsolutePaths) {
    const std::wstring absolute = directory / L"elsewhere\\work";
    std::string text = text::ToUtf8(platform::ToNativeText(absolute));
    for (std::size_t place = 0; (place = text.find('\\', place)) != std::string::npos; place += 2) {
        text.insert(place, "\\");
    }
    ASSERT_TRUE(Read(R"({"workDirectory":")" + text + "\"}")) << text::ToUtf8(problem);
    EXPECT_EQ(read.workDirectory, absolute);
}

TEST_F(SettingsFileTest, TakesAnEmptyLogFileAsNone) {
    ASSERT_TRUE(Read(R"({"logFile":""})"));
    EXPECT_EQ(read.logFile, L"");
}

TEST_F(SettingsFileTest, TakesAnEmptyListOfModulesAsNone) {
    ASSERT_TRUE(Read(R"({"functionModules":[]})"));
    EXPECT_TRUE(read.functionModules.empty());
}

TEST_F(SettingsFileTest, AddsInterpretersToTheBuiltInOnes) {
    ASSERT_TRUE(Read(R"({"interpreters":{".py":["python3"]}})"));
    EXPECT_EQ(read.interpreters.at(L".rb"), std::vector<std::wstring>{L"ruby"});
    EXPECT_EQ(read.interpreters.at(L".py"), std::vector<std::wstring>{L"python3"});
}

TEST_F(SettingsFileTest, AcceptsAByteOrderMark) {
    EXPECT_TRUE(Read("\xef\xbb\xbf{}"));
}

TEST_F(SettingsFileTest, WarnsOfAHookForAnUnknownEvent) {
    ASSERT_TRUE(Read(R"({"hooks":{"jobFail":["mail"]}})"));
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_NE(warnings[0].find(L"hooks.jobFail: there is no such member"), std::wstring::npos)
        << text::ToUtf8(warnings[0]);
}

TEST_F(SettingsFileTest, WarnsOfUnknownMembersWithTheirPlace) {
    ASSERT_TRUE(Read("{\n\"workDirectorie\":\"x\",\n\"scenarioDirectories\":[{\"path\":\"a\",\"lable\":\"b\"}]}"));
    ASSERT_EQ(warnings.size(), 2u);
    EXPECT_EQ(warnings[0], platform::ToNativeText(path) +
                               L", line 2, column 1: workDirectorie: there is no such member "
                               L"(\"workDirectorie\": did you mean \"workDirectory\"?)");
    EXPECT_EQ(warnings[1], platform::ToNativeText(path) + L", line 3, column 36: scenarioDirectories[0].lable: there "
                                                          L"is no such member (\"lable\": did you mean \"label\"?)");
}

TEST_F(SettingsFileTest, NamesAFileThatIsMissing) {
    EXPECT_FALSE(settings::ReadSettingsFile(directory / L"none.json", read, problem, warnings));
    EXPECT_EQ(problem.find(platform::ToNativeText(directory / L"none.json")), 0u);
}

TEST_F(SettingsFileTest, BuildsInWhatLiesBesideTheProgramAndInTheUsersDirectory) {
    const Settings builtIn = settings::BuiltInSettings();
    const std::wstring programs = platform::ProgramDirectory();
    EXPECT_EQ(builtIn.scenarioRunner, programs + L"\\scenario_runner" + platform::programExtension);
    ASSERT_EQ(builtIn.functionModules.size(), 1u);
    EXPECT_EQ(builtIn.functionModules[0], programs + L"\\local_process" + platform::moduleExtension);
    EXPECT_EQ(builtIn.interpreters.at(L".rb"), std::vector<std::wstring>{L"ruby"});
    const std::wstring data = platform::UserDataDirectory() + L"\\" + platform::applicationDirectoryName;
    EXPECT_EQ(builtIn.workDirectory, data + L"\\work");
    EXPECT_EQ(builtIn.jobListFile, data + L"\\job_list.json");
    EXPECT_EQ(builtIn.logFile, data + L"\\controller.log");
}
