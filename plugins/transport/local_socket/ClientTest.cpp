#include "transport/local_socket/Client.h"

#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "kit/Deadline.h"
#include "kit/local_socket/FakeNetwork.h"

namespace {

TEST(ClientTest, AStoppedEndDoesNotTryToConnect) {
    auto ownNetwork = std::make_unique<FakeNetwork>();
    const FakeNetwork& network = *ownNetwork;
    local_socket::Client client("place", std::move(ownNetwork), {}, [](const std::wstring&) {});
    EXPECT_FALSE(client.SendEvent(L"Ask", L""));
    EXPECT_EQ(network.Attempts(), 2);
    EXPECT_TRUE(client.Stop(test_support::timeout));
    EXPECT_FALSE(client.SendEvent(L"Ask", L""));
    EXPECT_EQ(network.Attempts(), 2);
}

} // namespace
