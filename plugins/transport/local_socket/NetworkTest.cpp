#include "transport/local_socket/Network.h"

#include <chrono>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "kit/local_socket/EndpointNames.h"

namespace {

using local_socket::Channel;
using local_socket::MakeLocalNetwork;
using local_socket::Network;
using local_socket::Timer;

/// Each accepted front end is followed by the next, which already waits when the network checks.
TEST(NetworkTest, FrontEndsThatComeWithoutEndDoNotHoldUpTheRest) {
    constexpr int tooMany = 10'000;
    const std::string place = NewEndpointName();
    const std::unique_ptr<Network> frontEnds = MakeLocalNetwork([](const std::wstring&) {});
    const std::unique_ptr<Network> engine = MakeLocalNetwork([](const std::wstring&) {});
    const std::unique_ptr<Timer> rest = engine->MakeTimer();
    int taken = 0;
    const auto nextFrontEnd = [&](const std::unique_ptr<Channel>&, local_socket::Room) {
        if (++taken == 1) {
            rest->Start(std::chrono::milliseconds::zero(), [&] { engine->Stop(); });
        }
        if (taken < tooMany) {
            frontEnds->Connect(place);
        } else {
            engine->Stop();
        }
    };
    ASSERT_EQ(engine->Listen(place, nextFrontEnd), L"");
    frontEnds->Connect(place);
    engine->Run();
    EXPECT_LT(taken, tooMany);
}

} // namespace
