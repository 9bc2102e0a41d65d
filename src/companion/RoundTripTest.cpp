#include <functional>

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/JobListFile.h"
#include "formats/Messages.h"
#include "formats/RunProtocol.h"
#include "kit/HostileStrings.h"
#include "kit/RecordMaker.h"
#include "kit/TemporaryDirectory.h"

namespace {

/// Runs a check with records of each hostile text, and of random texts.
void ForEachMaker(const std::function<void(const RecordMaker&)>& check) {
    for (const auto& text : HostileStrings()) {
        check({[&] { return text; }, [] { return -1; }});
    }
    RandomTexts random(20240305);
    for (int i = 0; i < 300; ++i) {
        check({[&] { return random(); }, [&] { return random.Number(); }});
    }
}

template <typename Value>
void ExpectReadBack(const std::wstring& json, const Value& value) {
    Value read{};
    ASSERT_TRUE(ControllerCSWrapper::Deserialize(json, read));
    EXPECT_TRUE(read == value);
}

} // namespace

TEST(RoundTripTest, JobListsOfAnyContent) {
    ForEachMaker([](const RecordMaker& make) {
        const std::vector<JobListInfo> jobs = {make.Job(), make.Job()};
        ExpectReadBack(ControllerCSWrapper::Serialize(L"JobList", jobs), jobs);
    });
}

TEST(RoundTripTest, RequestsOfAnyContent) {
    ForEachMaker([](const RecordMaker& make) {
        const EnqueueJobsInfo request = make.Request();
        ScheduledRequest read;
        ASSERT_TRUE(messages::Deserialize(ControllerCSWrapper::Serialize(L"EnqueueJobs", request), read));
        EXPECT_TRUE(read == ScheduledRequest(request));
    });
}

TEST(RoundTripTest, EnqueueResultsOfAnyContent) {
    ForEachMaker([](const RecordMaker& make) {
        const JobEnqueueResult result = make.Result();
        ExpectReadBack(messages::Serialize(L"EnqueueJobsFinish", result), result);
    });
}

TEST(RoundTripTest, StatusReportsOfAnyContent) {
    ForEachMaker([](const RecordMaker& make) {
        const std::vector<JobStatusInfo> statuses = {make.Status(), make.Status()};
        ExpectReadBack(messages::Serialize(L"UpdateProgress", statuses), statuses);
    });
}

TEST(RoundTripTest, ScenariosOfAnyContent) {
    ForEachMaker([](const RecordMaker& make) {
        const std::vector<ScenarioInfo> scenarios = {make.Scenario(), ScenarioInfo()};
        ExpectReadBack(messages::Serialize(L"FetchScenariosResponse", scenarios), scenarios);
    });
}

TEST(RoundTripTest, ParameterSetsOfAnyContent) {
    ForEachMaker([](const RecordMaker& make) {
        const std::vector<ScenarioParameterSetInfo> sets = {make.ParameterSet(), make.ParameterSet()};
        ExpectReadBack(messages::Serialize(L"FetchScenarioParameterSetsResponse", sets), sets);
    });
}

TEST(RoundTripTest, TextsOfAnyContent) {
    ForEachMaker([](const RecordMaker& make) {
        const std::vector<std::wstring> texts = {make.text(), make.text()};
        ExpectReadBack(ControllerCSWrapper::Serialize(L"CancelJobs", texts), texts);
        ExpectReadBack(messages::Serialize(L"Text", texts[0]), texts[0]);
    });
}

TEST(RoundTripTest, MessageNamesOfAnyContent) {
    ForEachMaker([](const RecordMaker& make) {
        const std::vector<std::wstring> texts = {L"a"};
        ExpectReadBack(ControllerCSWrapper::Serialize(make.text(), texts), texts);
    });
}

TEST(RoundTripTest, RunRequestsOfAnyContent) {
    ForEachMaker([](const RecordMaker& make) {
        const auto info = make.RunInfo();
        run_protocol::RunScenarioInfo read;
        std::wstring problem;
        ASSERT_TRUE(run_protocol::ParseRunScenarioInfo(run_protocol::SerializeRunScenarioInfo(info), read, problem));
        EXPECT_TRUE(read == info);
    });
}

TEST(RoundTripTest, RunResultsOfAnyContent) {
    ForEachMaker([](const RecordMaker& make) {
        const auto result = make.RunResult();
        run_protocol::RunScenarioResult read;
        ASSERT_TRUE(ControllerCSWrapper::ParseRunScenarioResultString(run_protocol::SerializeRunScenarioResult(result),
                                                                      read.jobId, read.succeeded, read.messages,
                                                                      read.outputFiles));
        EXPECT_TRUE(read == result);
    });
}

TEST(RoundTripTest, ProgressOfAnyContent) {
    ForEachMaker([](const RecordMaker& make) {
        const std::wstring jobId = make.text();
        const std::wstring message = make.text();
        const std::int32_t progress = make.number();
        std::wstring readId;
        std::wstring readMessage;
        int readProgress = 0;
        ASSERT_TRUE(ControllerCSWrapper::ParseProgressFileString(
            run_protocol::SerializeProgress(jobId, progress, message), readId, readMessage, readProgress));
        EXPECT_TRUE(readId == jobId && readMessage == message && readProgress == progress);
    });
}

TEST(RoundTripTest, JobListFilesOfAnyContent) {
    const TemporaryDirectory directory;
    const std::wstring path = directory / L"list.json";
    std::vector<JobListInfo> jobs;
    ForEachMaker([&](const RecordMaker& make) { jobs.push_back(make.Job()); });
    ASSERT_TRUE(ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", jobs), path));
    std::vector<JobListInfo> read;
    ASSERT_TRUE(ControllerCSWrapper::ParseJobList(path, read));
    EXPECT_TRUE(read == jobs);
}

TEST(RoundTripTest, ListsWrittenRowByRowAreTheSameBytes) {
    const TemporaryDirectory directory;
    std::vector<JobListInfo> jobs;
    const auto expectSame = [&] {
        std::size_t given = 0;
        const auto next = [&]() -> const JobListInfo* { return given == jobs.size() ? nullptr : &jobs[given++]; };
        ASSERT_TRUE(job_list_file::WriteRows(directory / L"rows.json", jobs.size(), next));
        ASSERT_TRUE(ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", jobs),
                                                        directory / L"whole.json"));
        EXPECT_TRUE(ReadTextFile(directory / L"rows.json") == ReadTextFile(directory / L"whole.json"));
    };
    expectSame();
    ForEachMaker([&](const RecordMaker& make) { jobs.push_back(make.Job()); });
    expectSame();
}
