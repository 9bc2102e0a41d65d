#include "kit/front_end/CadjobsFixture.h"

#include "platform/files/NativePath.h"

namespace {

class ListTest : public CadjobsFixture {
protected:
    /// A native path, as a user sees it.
    static std::string Native(const std::wstring& path) { return text::ToUtf8(platform::ToNativeText(path)); }

    JobListInfo Succeeded() {
        JobListInfo job = Job(3, L"part.stl", JobStatus::Success);
        job.progress = 100;
        job.outputDir = L"/out/part";
        job.startTime = L"2026-03-05T07:08:09Z";
        job.endTime = L"2026-03-05T07:08:16Z";
        return job;
    }

    /// The failed job; its result has the reason.
    JobListInfo Failed() {
        JobListInfo job = Job(4, L"frame.stl", JobStatus::Failed);
        job.inputFiles.push_back(L"/in/base.stl");
        job.progress = 40;
        job.workDir = directory / L"work4";
        job.startTime = L"2026-03-05T06:00:00Z";
        job.endTime = L"2026-03-05T07:01:05Z";
        WriteTextFile(directory / L"work4\\run_scenario_result.json",
                      R"({"version":1,"jobId":"id4","succeeded":false,)"
                      R"("messages":[{"code":3,"text":"The mesh\nis not closed."},{"code":4,"text":"Second."}]})");
        return job;
    }

    JobListInfo Running() {
        JobListInfo job = Job(12, L"gear.stl", JobStatus::Running);
        job.progress = 30;
        job.workDir = directory / L"work12";
        job.startTime = L"2026-03-05T07:09:18Z";
        WriteTextFile(directory / L"work12\\progress_info_list.json",
                      R"({"version":1,"jobId":"id12","progressInfoList":[{"progress":30,"message":"reading"}]})");
        return job;
    }
};

TEST_F(ListTest, ShowsATableWithMessagesAndOutputDirectories) {
    host.jobs = {Succeeded(), Failed(), Running(), Job(13, L"gear.stl", JobStatus::Queued)};
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(console.output,
              "Job  State    Progress     Time  Scenario     Input         Output folder, or what the scenario says\n"
              "  3  Success     100 %     0:07  Mesh report  part.stl      " +
                  Native(L"/out/part") +
                  "\n"
                  "  4  Failed       40 %  1:01:05  Mesh report  frame.stl +1  The mesh is not closed.\n"
                  " 12  Running      30 %     0:42  Mesh report  gear.stl      reading\n"
                  " 13  Queued        0 %           Mesh report  gear.stl\n");
    EXPECT_EQ(console.errors, "");
}

TEST_F(ListTest, SomeJobsAreFetchedWithoutTheOthers) {
    host.jobs = {Succeeded(), Failed(), Job(13, L"gear.stl", JobStatus::Success)};
    EXPECT_EQ(Run({L"list", L"13,id3"}), 0);
    EXPECT_LT(console.output.find("\n 13  Success"), console.output.find("\n  3  Success")) << console.output;
    EXPECT_EQ(console.output.find("Failed"), std::string::npos) << console.output;
    EXPECT_EQ(host.Requests().front().payload, LR"({"FetchJobsRequest":{"jobs":["13","id3"]}})");
    EXPECT_EQ(Run({L"list", L"3,99"}), 2);
    EXPECT_EQ(Run({L"watch", L"--jobs", L"3"}), 2);
}

TEST_F(ListTest, ALongListIsFetchedInPartsForJson) {
    for (std::int32_t number = 1; number <= 2000; ++number) {
        host.jobs.emplace_back(Job(number, L"part.stl", JobStatus::Queued));
    }
    EXPECT_EQ(Run({L"list", L"--json"}), 0);
    const std::string whole = std::exchange(console.output, "");
    ASSERT_EQ(host.Requests().size(), 3U);
    EXPECT_EQ(host.Requests().at(1).payload, LR"({"FetchJobsRequest":{"after":1000,"limit":1000}})");
    host.jobs.resize(1001);
    EXPECT_EQ(Run({L"list", L"--json"}), 0);
    EXPECT_EQ(whole.substr(0, console.output.size() - 3), console.output.substr(0, console.output.size() - 3));
    EXPECT_TRUE(console.output.ends_with("}]}\n"));
    EXPECT_TRUE(whole.ends_with("}]}\n"));
}

TEST_F(ListTest, FitsANarrowTerminal) {
    host.jobs = {Failed(), Running()};
    console.isTerminal = true;
    console.width = 60;
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(console.output, "Job  State    Progress     Time  Scenario  Input     Output…\n"
                              "  4  Failed       40 %  1:01:05  Mesh re…  frame.s…  The me…\n"
                              " 12  Running      30 %     0:42  Mesh re…  gear.stl  reading\n");
}

TEST_F(ListTest, LeavesColumnsOutWhereATerminalHasNoRoomForThem) {
    host.jobs = {Failed()};
    console.isTerminal = true;
    console.width = 20;
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(console.output, "Job  State   Progre…\n"
                              "  4  Failed     40 %\n");
}

TEST_F(ListTest, ColoursAreNeverTheOnlySign) {
    host.jobs = {Job(1, L"a.stl", JobStatus::Failed), Job(2, L"b.stl", JobStatus::Success)};
    console.isTerminal = true;
    console.hasColours = true;
    console.width = 200;
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_NE(console.output.find("\x1b[31mFailed\x1b[0m "), std::string::npos);
    EXPECT_NE(console.output.find("\x1b[32mSuccess\x1b[0m"), std::string::npos);
}

TEST_F(ListTest, EachStateHasAName) {
    for (std::int32_t status = 0; status <= 7; ++status) {
        host.jobs.push_back(Job(status, L"a.stl", static_cast<JobStatus>(status)));
    }
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(console.output,
              "Job  State      Progress  Time  Scenario     Input  Output folder, or what the scenario says\n"
              "  0  Queued          0 %        Mesh report  a.stl\n"
              "  1  Running         0 %        Mesh report  a.stl\n"
              "  2  Success         0 %        Mesh report  a.stl\n"
              "  3  Failed          0 %        Mesh report  a.stl\n"
              "  4  Dequeued        0 %        Mesh report  a.stl\n"
              "  5  Canceling       0 %        Mesh report  a.stl\n"
              "  6  Canceled        0 %        Mesh report  a.stl\n"
              "  7  Unknown         0 %        Mesh report  a.stl\n");
}

TEST_F(ListTest, AScenarioCannotSendTheTerminalEscapeSequences) {
    JobListInfo job = Job(1, L"a\x1b]0;title\a.stl", JobStatus::Queued);
    host.jobs = {job};
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(console.output.find('\x1b'), std::string::npos);
    EXPECT_NE(console.output.find("a ]0;title .stl"), std::string::npos);
}

TEST_F(ListTest, AnEmptyListIsSaidSo) {
    EXPECT_EQ(Run({L"list"}), 0);
    EXPECT_EQ(console.output, "There are no jobs.\n");
}

TEST_F(ListTest, JsonHasAVersionAndStableNames) {
    host.jobs = {Succeeded()};
    host.jobs[0].runArgument = L"size=640";
    UseSettings(R"({"version":1,"logFile":"","culture":"de-DE"})");
    EXPECT_EQ(Run({L"list", L"--json"}), 0);
    std::string out = Native(L"/out/part");
    std::string in = Native(L"/in/part.stl");
    for (std::string* path : {&out, &in}) {
        for (std::size_t at = path->find('\\'); at != std::string::npos; at = path->find('\\', at + 2)) {
            path->insert(at, 1, '\\');
        }
    }
    EXPECT_EQ(console.output,
              R"({"version":1,"jobs":[{"number":3,"id":"id3","status":"Success","progress":100,"message":"",)"
              R"("scenario":"Mesh report","inputFiles":[")" +
                  in +
                  R"("],"runArgument":"size=640",)"
                  R"("outputFolder":")" +
                  out +
                  R"(","workFolder":"","startTime":"2026-03-05T07:08:09Z",)"
                  R"("endTime":"2026-03-05T07:08:16Z","messages":[],"outputFiles":[]}]})"
                  "\n");
}

TEST_F(ListTest, AnEmptyListIsAnEmptyJsonList) {
    EXPECT_EQ(Run({L"list", L"--json"}), 0);
    EXPECT_EQ(console.output, "{\"version\":1,\"jobs\":[]}\n");
}

} // namespace
