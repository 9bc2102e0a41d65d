#include "cadjobs/Cadjobs.h"

#include <algorithm>
#include <map>
#include <sstream>

#include <rapidjson/document.h>

#include "cadjobs/command_line/Subcommands.h"
#include "formats/Messages.h"
#include "kit/JsonSchema.h"
#include "kit/front_end/CommandContextFixture.h"

namespace {

using Arguments = std::vector<std::wstring>;

/// What each subcommand writes with `--json`.
class JsonOutputSchemaTest : public CommandContextFixture {
protected:
    JsonOutputSchemaTest() {
        context.stop = stop.Handle();
        HaveJobs();
        HaveAnswers();
        WriteTextFile(directory / L"wall\\manifest.json",
                      R"({"version":1,"displayName":"Wall","entryPoint":"main.rb","interpreter":"ruby"})");
        WriteTextFile(directory / L"wall\\main.rb", "");
        WriteTextFile(directory / L"part.stl", "solid");
        WriteTextFile(directory / L"work\\scenario.log", "a line\n");
        console.input =
            R"({"EnqueueJobs":[{"scenario":{"id":"1"},"outputDir":"/out","inputFileSets":[["/in/a.stl"]]}]})";
    }

    void HaveJobs() {
        host.jobs = {Job(1, L"a.stl", JobStatus::Success), Job(2, L"b.stl", JobStatus::Queued)};
        host.jobs[0].startTime = L"2026-03-05T07:08:09Z";
        host.jobs[0].workDir = directory / L"work";
        ListedJob& waiting = host.jobs[1];
        waiting.needs = {{L"cad", 2}};
        waiting.priority = 3;
        waiting.hold = true;
        waiting.waitReason = L"hold";
        waiting.retries = 2;
        waiting.timeLimit = 60;
        waiting.queuedTime = 1772694000;
        waiting.after = {L"id1"};
        // Two characters where an element is a character: no JSON text.
        waiting.inputFiles = {std::wstring(L"/in/") + wchar_t{0xd83d} + wchar_t{0xde00}};
    }

    template <typename Answer>
    void Have(const wchar_t* request, const wchar_t* response, const Answer& answer) {
        host.answers[request] = {response, messages::Serialize(response, answer)};
    }

    void HaveAnswers() {
        const std::vector reports = {Status(1, JobStatus::Success), Status(2, JobStatus::Queued)};
        Have(L"CancelJobs", L"CancelJobsFinish", reports);
        Have(L"EditJobsRequest", L"EditJobsFinish", reports);
        host.answers[L"DeleteJobsRequest"] = {L"DeleteJobsResponse", LR"({"DeleteJobsResponse":["id1"]})"};
        host.answers[L"TerminateRequest"] = {L"TerminateResponse", LR"({"TerminateResponse":null})"};
        host.onAnswered = [this](const std::wstring& request) {
            host.transmitter.isEngineThere = request != L"TerminateRequest";
        };
        Have(L"FetchScenariosRequest", L"FetchScenariosResponse",
             std::vector<ScenarioInfo>{{L"17", L"", L"/s/wall.rb", L"Wall", {{L"STL", {L"stl"}}}}});
        Have(L"FetchScenarioParameterSetsRequest", L"FetchScenarioParameterSetsResponse",
             std::vector<ScenarioParameterSetInfo>{
                 {L"standard", L"Standard", L"", {{L"size", L"integer", L"800", {L"400"}}}}});
        Have(L"SetQueueStateRequest", L"QueueStateResponse", QueueState{true});
        host.onRequest = [this](const std::wstring& request) {
            if (request == L"EnqueueJobs") {
                ScheduledRequest sent;
                ASSERT_TRUE(messages::Deserialize(host.Requests().back().payload, sent));
                JobEnqueueResult result;
                result.requestId = sent.requestId;
                result.jobIds = {{L"id1", 1}};
                result.inputSetResults = {{}};
                Have(L"EnqueueJobs", L"EnqueueJobsFinish", result);
            }
        };
    }

    /// A command line for each subcommand.
    std::map<std::string, Arguments> CommandLines() const {
        return {{"run", {directory / L"wall\\main.rb", directory / L"part.stl"}},
                {"add", {L"-"}},
                {"list", {}},
                {"watch", {}},
                {"show", {L"1,2"}},
                {"wait", {L"1"}},
                {"log", {L"1"}},
                {"cancel", {L"2"}},
                {"delete", {L"1"}},
                {"clean", {L"--state", L"Success"}},
                {"again", {L"1"}},
                {"edit", {L"2", L"--priority", L"4"}},
                {"hold", {L"2"}},
                {"release", {L"2"}},
                {"pause", {}},
                {"resume", {}},
                {"scenarios", {}},
                {"parameters", {L"17"}},
                {"new", {L"fresh", L"--output", directory / L"made"}},
                {"check", {directory / L"wall"}},
                {"pack", {directory / L"wall", L"--output", directory / L"made"}},
                {"doctor", {}},
                {"settings check", {}},
                {"settings language", {directory / L"wall\\manifest.json"}},
                {"settings show", {}},
                {"settings path", {}},
                {"host start", {}},
                {"host status", {}},
                {"host stop", {}}};
    }

    std::string JsonOf(const std::string& subcommand, const Arguments& more) {
        Arguments arguments;
        std::istringstream words(subcommand);
        for (std::string word; words >> word;) {
            arguments.push_back(text::FromUtf8(word));
        }
        arguments.insert(arguments.end(), more.begin(), more.end());
        arguments.push_back(L"--json");
        console.output.clear();
        console.errors.clear();
        (void)front_end::RunCadjobs(context, arguments);
        return console.output;
    }
};

TEST_F(JsonOutputSchemaTest, EachSubcommandWritesWhatTheSchemaSays) {
    const std::map<std::string, Arguments> lines = CommandLines();
    for (const front_end::SubcommandSpec& spec : front_end::Subcommands()) {
        const auto& options = spec.options;
        if (std::find(options.begin(), options.end(), std::string("--json")) == options.end()) {
            continue;
        }
        ASSERT_TRUE(lines.contains(spec.name)) << spec.name;
        host.runs = true;
        HaveJobs();
        console.onWrite = [&] { spec.kind == front_end::CommandKind::Watch ? stop.Raise() : stop.Clear(); };
        std::istringstream output(JsonOf(spec.name, lines.at(spec.name)));
        int count = 0;
        for (std::string line; std::getline(output, line); ++count) {
            EXPECT_EQ(test_support::SchemaProblem("cadjobs", line, true), "") << spec.name;
        }
        EXPECT_GT(count, 0) << spec.name << ": " << console.errors;
        stop.Clear();
    }
}

TEST_F(JsonOutputSchemaTest, NoSubcommandWritesALoneSurrogate) {
    const std::map<std::string, Arguments> lines = CommandLines();
    const std::wstring half(1, wchar_t{0xd83d});
    for (const auto& [subcommand, more] : lines) {
        HaveJobs();
        for (ListedJob& job : host.jobs) {
            job.inputFiles = {L"/in/" + half};
            job.scenario.displayName = half;
            job.needs = {{half, 1}};
        }
        host.runs = true;
        console.onWrite = [&] { subcommand == "watch" ? stop.Raise() : stop.Clear(); };
        std::istringstream output(JsonOf(subcommand, more));
        for (std::string line; std::getline(output, line);) {
            rapidjson::Document document;
            document.Parse<rapidjson::kParseValidateEncodingFlag>(line.c_str());
            EXPECT_FALSE(document.HasParseError()) << subcommand << ": " << line;
        }
        stop.Clear();
    }
}

TEST_F(JsonOutputSchemaTest, TheOverviewIsInTheSchemaWithAndWithoutAHost) {
    EXPECT_EQ(test_support::SchemaProblem("cadjobs", JsonOf("", {}), true), "");
    host.runs = false;
    EXPECT_EQ(test_support::SchemaProblem("cadjobs", JsonOf("", {}), true), "");
}

TEST_F(JsonOutputSchemaTest, TheSchemaRefusesOtherOutput) {
    for (const char* const json :
         {R"({})", R"({"version":1})", R"({"version":2,"paused":true})", R"({"version":1,"jobs":[{"number":1}]})",
          R"({"version":1,"paused":"no"})", R"({"version":1,"checks":[{"name":"a","fine":1,"message":""}]})"}) {
        EXPECT_NE(test_support::SchemaProblem("cadjobs", json), "") << json;
    }
    EXPECT_EQ(test_support::SchemaProblem("cadjobs", R"({"version":1,"paused":true,"later":1})"), "");
}

} // namespace
