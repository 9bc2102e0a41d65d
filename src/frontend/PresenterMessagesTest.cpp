#include "CommonControllerLib/CLIPresenter.h"
#include "CommonControllerLib/ControllerLogManager.h"
#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Messages.h"
#include "kit/TemporaryDirectory.h"
#include "kit/doubles/ScriptedTransmitter.h"
#include "kit/doubles/TurnedClock.h"
#include "kit/modules/ModuleFiles.h"
#include "platform/files/FileSystem.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// The presenter's requests and the engine's responses as JSON.
class PresenterMessagesTest : public testing::Test {
protected:
    PresenterMessagesTest() {
        ControllerLogManager::Initialize(0, L"", false); // no log file in the user's directory
        transmitter.onSend = [this](const auto& event) { Answer(event); };
    }

    void Answer(const ScriptedTransmitter::Event& request) {
        if (request.name == L"EnqueueJobs") {
            EXPECT_TRUE(transmitter.Deliver(L"EnqueueJobsFinish", EnqueueAnswer(request.payload)));
        } else if (request.name == L"CheckJobStatusRequest") {
            EXPECT_TRUE(transmitter.Deliver(L"CheckJobStatusResponse", StatusAnswer(request.payload)));
        }
    }

    /// Numbers the input sets of the request from 1.
    static std::wstring EnqueueAnswer(const std::wstring& payload) {
        ScheduledRequest info;
        EXPECT_TRUE(messages::Deserialize(payload, info));
        JobEnqueueResult result;
        result.requestId = info.requestId;
        for (std::int32_t seqId = 1; seqId <= static_cast<std::int32_t>(info.inputFileSets.size()); ++seqId) {
            result.jobIds.push_back({L"a" + std::to_wstring(seqId), seqId});
        }
        return messages::Serialize(L"EnqueueJobsFinish", result);
    }

    /// Reports each requested job as running.
    static std::wstring StatusAnswer(const std::wstring& payload) {
        std::vector<std::wstring> ids;
        EXPECT_TRUE(ControllerCSWrapper::Deserialize(payload, ids));
        std::vector<JobStatusInfo> statuses;
        for (const std::wstring& id : ids) {
            statuses.emplace_back();
            statuses.back().id = id;
            statuses.back().status = JobStatus::Running;
        }
        return messages::Serialize(L"CheckJobStatusResponse", statuses);
    }

    TemporaryDirectory directory;
    const std::wstring outputFile = directory / L"out.txt";
    TurnedClock clock;
    ScriptedTransmitter transmitter;
    CLIPresenter presenter{transmitter.Id(), test_modules::ModulePath(L"transmitter_by_address")};
};

TEST_F(PresenterMessagesTest, ARequestOfTenThousandInputSetsGivesTenThousandLines) {
    std::string inputFileSets;
    std::string expected;
    for (int seqId = 1; seqId <= 10000; ++seqId) {
        inputFileSets += std::string(seqId == 1 ? "" : ",") + R"(["part.stl"])";
        expected += std::to_string(seqId) + ",Queued" + std::string(platform::lineEnd);
    }
    WriteTextFile(directory / L"jobs.json", R"({"EnqueueJobs":[{"scenario":{"id":"mesh_report.rb"},"outputDir":"out",)"
                                            R"("inputFileSets":[)" +
                                                inputFileSets + "]}]}");
    presenter.EnqueueJobsFromFile(directory / L"jobs.json", outputFile);
    EXPECT_TRUE(ReadTextFile(outputFile) == expected);
    EXPECT_EQ(transmitter.sent.size(), 1U);
}

TEST_F(PresenterMessagesTest, AStatusRequestIsAnsweredByTheTextsItAskedWith) {
    presenter.CheckJobStatus({L"5", L"x\"\u00e4"}, outputFile);
    const std::string end(platform::lineEnd);
    EXPECT_EQ(ReadTextFile(outputFile), "5,Running" + end + "0,Running" + end);
    std::wstring id;
    EXPECT_TRUE(presenter.FindJobId(0, id));
    EXPECT_EQ(id, L"x\"\u00e4");
}

} // namespace
