#include "transport/local_socket/Network.h"

#include <chrono>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "kit/Deadline.h"
#include "kit/local_socket/EndpointNames.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "platform/processes/Waiting.h"

namespace {

using local_socket::Channel;
using local_socket::LocalPlace;
using local_socket::MakeLocalNetwork;
using local_socket::Network;

/// An engine that accepts all connections, on its own thread.
class LostPlaceTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(engine->Listen(name, [](const std::unique_ptr<Channel>&, local_socket::Room) {}), L"");
        thread = std::thread([this] { engine->Run(); });
    }
    void TearDown() override {
        engine->Stop();
        thread.join();
    }

    std::wstring SocketPath() const { return platform::ResolveAgainst({}, LocalPlace(name)); }

    void AwaitFrontEndThatIsTaken() const {
        const test_support::Deadline deadline("a socket that is made again");
        constexpr std::chrono::milliseconds interval{20};
        const std::unique_ptr<Network> frontEnd = MakeLocalNetwork([](const std::wstring&) {});
        while (!frontEnd->Connect(name).channel) {
            platform::WaitForAny({}, interval);
        }
    }

    const std::string name = NewEndpointName();
    const std::unique_ptr<Network> engine = MakeLocalNetwork([](const std::wstring&) {});
    std::thread thread;
};

TEST_F(LostPlaceTest, AnEngineMakesItsSocketAgain) {
    for (int time = 0; time < 2; ++time) {
        ASSERT_TRUE(platform::RemoveFile(SocketPath()));
        AwaitFrontEndThatIsTaken();
    }
}

TEST_F(LostPlaceTest, AnEngineMakesTheDirectoryOfItsSocketAgain) {
    ASSERT_TRUE(platform::RemoveTree(platform::ParentDirectory(SocketPath())));
    AwaitFrontEndThatIsTaken();
}

} // namespace
