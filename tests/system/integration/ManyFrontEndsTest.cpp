#include "kit/processes/HostProcessFixture.h"
#include "kit/processes/IdleFrontEnds.h"

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/OtherProcesses.h"
#include "platform/files/FileSystem.h"
#include "transport/local_socket/Limits.h"

#include <optional>

namespace {

/// Front ends as processes that connect and disconnect at will.
class ManyFrontEndsTest : public HostProcessFixture {
protected:
    platform::OwnedHandle StartFrontEnd(const std::vector<std::wstring>& arguments, void* output = nullptr) const {
        platform::ProcessStart start = FrontEndProcess(arguments);
        start.output = output;
        platform::OwnedHandle process;
        EXPECT_TRUE(platform::StartProcess(start, process));
        return process;
    }

    void ExpectTheHostAnswers() const {
        const test_support::Ending status =
            test_support::RunToEnd(FrontEndProcess({L"controller_cli", L"-f", L"-s", L"1"}));
        EXPECT_EQ(status.exitCode, 0);
        EXPECT_EQ(status.output, "1,Success" + std::string(platform::lineEnd));
    }
};

TEST_F(ManyFrontEndsTest, FiftyAtOnceAreAllAnswered) {
    StartHost();
    std::vector<platform::OwnedHandle> processes;
    for (int count = 0; count < 50; ++count) {
        processes.push_back(StartFrontEnd({L"cadjobs", L"list", L"-f"}));
    }
    for (const platform::OwnedHandle& process : processes) {
        ASSERT_TRUE(test_support::WaitUntilSignalled(process.Get()));
        EXPECT_EQ(platform::ExitCode(process.Get()), 0);
    }
}

TEST_F(ManyFrontEndsTest, OneThatIsKilledRightAfterItsStartHarmsNobody) {
    SaveLongList();
    StartHost();
    for (int count = 0; count < 10; ++count) {
        const platform::OwnedHandle process = StartFrontEnd({L"cadjobs", L"list", L"--json", L"-f"});
        test_support::KillProcess(process.Get());
        ASSERT_TRUE(test_support::WaitUntilSignalled(process.Get()));
    }
    ExpectTheHostAnswers();
}

TEST_F(ManyFrontEndsTest, OneThatIsKilledInTheMiddleOfItsAnswerHarmsNobody) {
    SaveLongList();
    StartHost();
    platform::OutputPipe pipe;
    ASSERT_TRUE(pipe.Open());
    const platform::OwnedHandle process = StartFrontEnd({L"cadjobs", L"list", L"--json", L"-f"}, pipe.WriteEnd());
    pipe.CloseWriteEnd();
    ASSERT_TRUE(test_support::ReadUntil(pipe, "{\"version\":1,\"jobs\":["));
    test_support::KillProcess(process.Get());
    ASSERT_TRUE(test_support::WaitUntilSignalled(process.Get()));
    ExpectTheHostAnswers();
}

TEST_F(ManyFrontEndsTest, OneMoreThanTheHostServesIsToldThatItIsBusy) {
    StartHost();
    std::optional<IdleFrontEnds> others(std::in_place, endpointName, local_socket::Limits().peers);
    for (const std::vector<std::wstring>& arguments :
         std::vector<std::vector<std::wstring>>{{L"cadjobs", L"list"},
                                                {L"cadjobs", L"list", L"-f"},
                                                {L"controller_cli", L"-s1"},
                                                {L"controller_cli", L"-c1", L"-f"},
                                                {L"cadjobs", L"wait", L"1"}}) {
        const auto refused = test_support::RunToEnd(FrontEndProcess(arguments, std::chrono::seconds(0)));
        EXPECT_EQ(refused.exitCode, 3) << refused.output;
        EXPECT_NE(refused.output.find("The host cannot be reached: it is busy: 256 front ends are connected"),
                  std::string::npos)
            << refused.output;
    }
    const platform::OwnedHandle waiting = StartFrontEnd({L"cadjobs", L"list", L"-f"});
    others.reset();
    ASSERT_TRUE(test_support::WaitUntilSignalled(waiting.Get()));
    EXPECT_EQ(platform::ExitCode(waiting.Get()), 0);
}

TEST_F(ManyFrontEndsTest, OneRequestOfTenThousandSetsIsAnsweredWhole) {
    StartHost();
    TestClient frontEnd(endpointName);
    const std::vector<JobIdInfo> jobs = frontEnd.Enqueue(JobsFile("exit 0", 10000));
    ASSERT_EQ(jobs.size(), 10000U);
    EXPECT_EQ(jobs.front().seqId, 1);
    EXPECT_EQ(jobs.back().seqId, 10000);
}

} // namespace
