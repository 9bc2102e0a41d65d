#include "transport/local_socket/windows/EndpointAddress.h"

#include <chrono>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include <windows.h>

namespace {

using local_socket::Instance;
using local_socket::IsOwnPipe;
using local_socket::MakePipe;
using local_socket::OpenedPipe;
using local_socket::OpenPipe;
using local_socket::OwnUserSid;
using local_socket::PipeDescriptorText;
using local_socket::PipePath;

using namespace std::chrono_literals;

std::string NewName() {
    std::random_device random;
    return "t" + std::to_string(random());
}

TEST(EndpointAddressTest, TheUserHasASid) {
    EXPECT_EQ(OwnUserSid().substr(0, 6), L"S-1-5-");
}

TEST(EndpointAddressTest, ThePipeIsNamedAfterTheUserAndThePlace) {
    EXPECT_EQ(PipePath(L"S-1-5-21-7", "host"), L"\\\\.\\pipe\\common_controller-S-1-5-21-7-host");
}

TEST(EndpointAddressTest, ThePipeIsTheUsersAndNobodyElses) {
    EXPECT_EQ(PipeDescriptorText(L"S-1-5-21-7"), L"O:S-1-5-21-7D:P(A;;GA;;;S-1-5-21-7)");
}

TEST(EndpointAddressTest, AFrontEndFindsTheEngineThatListens) {
    const std::string name = NewName();
    const OpenedPipe engine = MakePipe(name, Instance::First);
    ASSERT_EQ(engine.failure, L"");
    const OpenedPipe client = OpenPipe(name, 0ms);
    EXPECT_EQ(client.failure, L"");
    ASSERT_TRUE(client.pipe);
    EXPECT_TRUE(IsOwnPipe(client.pipe.Get(), OwnUserSid()));
    EXPECT_FALSE(IsOwnPipe(client.pipe.Get(), L"S-1-5-21-7"));
}

TEST(EndpointAddressTest, WhereNobodyListensThereIsNoPipeAndNoComplaint) {
    const OpenedPipe client = OpenPipe(NewName(), 0ms);
    EXPECT_FALSE(client.pipe);
    EXPECT_EQ(client.failure, L"");
}

TEST(EndpointAddressTest, ASecondEngineIsRefused) {
    const std::string name = NewName();
    const OpenedPipe first = MakePipe(name, Instance::First);
    const OpenedPipe second = MakePipe(name, Instance::First);
    EXPECT_FALSE(second.pipe);
    EXPECT_NE(second.failure.find(L"another engine listens there"), std::wstring::npos);
}

TEST(EndpointAddressTest, TheSameEngineMakesAnEndForEveryFrontEnd) {
    const std::string name = NewName();
    const OpenedPipe first = MakePipe(name, Instance::First);
    const OpenedPipe second = MakePipe(name, Instance::Further);
    EXPECT_TRUE(second.pipe);
    EXPECT_TRUE(OpenPipe(name, 0ms).pipe);
    EXPECT_TRUE(OpenPipe(name, 0ms).pipe);
}

TEST(EndpointAddressTest, AnEngineWhoseEndsAreTakenIsWaitedForAndThenToldOf) {
    const std::string name = NewName();
    const OpenedPipe only = MakePipe(name, Instance::First);
    const OpenedPipe first = OpenPipe(name, 0ms);
    ASSERT_TRUE(first.pipe);
    const OpenedPipe second = OpenPipe(name, 1ms);
    EXPECT_FALSE(second.pipe);
    EXPECT_NE(second.failure.find(L"the engine there is busy"), std::wstring::npos) << second.failure;
    EXPECT_TRUE(second.isBusy);
}

} // namespace
