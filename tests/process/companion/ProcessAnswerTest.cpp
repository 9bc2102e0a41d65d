#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "formats/RunProtocol.h"
#include "kit/LogCapture.h"
#include "kit/TestProcess.h"
#include "platform/processes/ForeignProcess.h"
#include "platform/processes/Process.h"
#include "platform/processes/Waiting.h"
#include "text/Hexadecimal.h"

namespace {

using platform::OwnedHandle;

/// A process that ends when `end` is raised.
OwnedHandle StartWaiter(const platform::Event& end) {
    platform::ProcessStart start =
        test_support::TestProcess({L"wait-for", platform::InheritedHandleText(end.Handle())});
    start.inherited = {end.Handle()};
    OwnedHandle process;
    EXPECT_TRUE(platform::StartProcess(start, process));
    return process;
}

/// The process named by the answer; null if the answer is refused.
OwnedHandle Take(const std::wstring& answer) {
    void* process = nullptr;
    return OwnedHandle(ControllerCSWrapper::Deserialize(answer, process) ? process : nullptr);
}

std::wstring IdAnswer(std::uint32_t id) {
    return L"{\"ProcessId\":" + std::to_wstring(id) + L"}";
}

void ExpectItEndsWith(platform::Event& end, const OwnedHandle& process) {
    ASSERT_TRUE(process);
    EXPECT_TRUE(platform::IsProcessRunning(process.Get()));
    end.Raise();
    EXPECT_TRUE(test_support::WaitUntilSignalled(process.Get()));
    EXPECT_FALSE(platform::IsProcessRunning(process.Get()));
}

} // namespace

TEST(ProcessAnswerTest, AHandleIsTakenOver) {
    platform::Event end;
    OwnedHandle started = StartWaiter(end);
    void* const handle = started.Release();
    const OwnedHandle taken = Take(run_protocol::SerializeProcessHandle(handle));
    EXPECT_EQ(taken.Get(), handle);
    ExpectItEndsWith(end, taken);
}

TEST(ProcessAnswerTest, AHandleMayStandUnderAnyNameAndInEitherCase) {
    platform::Event end;
    OwnedHandle started = StartWaiter(end);
    std::wstring digits = text::HexadecimalText(platform::NumberOfHandle(started.Get()));
    const OwnedHandle taken = Take(L"{\"H\":\"0X000" + digits + L"\"}");
    EXPECT_EQ(taken.Get(), started.Release());
    ExpectItEndsWith(end, taken);
}

TEST(ProcessAnswerTest, AProcessIdIsOpened) {
    platform::Event end;
    const OwnedHandle started = StartWaiter(end);
    const OwnedHandle taken = Take(IdAnswer(platform::ProcessNumber(started.Get())));
    EXPECT_NE(taken.Get(), started.Get());
    ExpectItEndsWith(end, taken);
}

TEST(ProcessAnswerTest, AProcessThatHasEndedCanStillBeNamedById) {
    platform::Event end;
    const OwnedHandle started = StartWaiter(end);
    end.Raise();
    ASSERT_TRUE(test_support::WaitUntilSignalled(started.Get()));
    const OwnedHandle taken = Take(IdAnswer(platform::ProcessNumber(started.Get())));
    ASSERT_TRUE(taken);
    EXPECT_FALSE(platform::IsProcessRunning(taken.Get()));
}

TEST(ProcessAnswerTest, WhatIsNoProcessIsRefusedAndLeftOpen) {
    const platform::Event other;
    const LogCapture log;
    EXPECT_FALSE(Take(run_protocol::SerializeProcessHandle(other.Handle())));
    EXPECT_TRUE(OwnedHandle(platform::CopyHandle(other.Handle())));
    EXPECT_NE(log.Text().find("The answer of a function module names no process: \"0x"), std::string::npos)
        << log.Text();
    EXPECT_NE(log.Text().find("is no handle of another process"), std::string::npos) << log.Text();
}

TEST(ProcessAnswerTest, ThisVeryProcessIsRefused) {
    const OwnedHandle self = platform::OpenSelf();
    EXPECT_FALSE(Take(run_protocol::SerializeProcessHandle(self.Get())));
    EXPECT_TRUE(platform::IsProcessRunning(self.Get()));
    EXPECT_FALSE(Take(IdAnswer(platform::OwnProcessNumber())));
    EXPECT_FALSE(Take(L"{\"H\":\"0xffffffffffffffff\"}"));
}

TEST(ProcessAnswerTest, AnIdOfNoProcessIsRefused) {
    const LogCapture log;
    EXPECT_FALSE(Take(IdAnswer(0)));
    EXPECT_FALSE(Take(IdAnswer(UINT32_MAX)));
    EXPECT_NE(log.Text().find("the process with the id 4294967295 cannot be watched: "), std::string::npos)
        << log.Text();
}

TEST(ProcessAnswerTest, OtherAnswersAreRefusedAndLeaveTheOutputAsItWas) {
    for (const wchar_t* json : {L"{\"H\":500}",
                                L"{\"H\":\"\"}",
                                L"{\"H\":\"0x\"}",
                                L"{\"H\":\"0x0\"}",
                                L"{\"H\":\"0\"}",
                                L"{\"H\":\"0xg\"}",
                                L"{\"H\":\"-1\"}",
                                L"{\"H\":\"0x-1\"}",
                                L"{\"H\":\" 1\"}",
                                L"{\"H\":\"0x0x1\"}",
                                L"{\"H\":\"0x1 \"}",
                                L"{\"H\":\"0x10000000000000000\"}",
                                L"{\"H\":\"1\\u0000\"}",
                                L"{\"H\":null}",
                                L"{}",
                                L"",
                                L"[]",
                                L"{\"ProcessId\":\"12\"}",
                                L"{\"ProcessId\":-1}",
                                L"{\"ProcessId\":4294967296}",
                                L"{\"ProcessId\":1.5}",
                                L"{\"ProcessId\":1,\"ProcessHandle\":\"0x1\"}",
                                L"{\"ProcessId\":1,\"ProcessId\":1}"}) {
        void* handle = &handle;
        EXPECT_FALSE(ControllerCSWrapper::Deserialize(json, handle)) << json;
        EXPECT_EQ(handle, &handle) << json;
    }
}
