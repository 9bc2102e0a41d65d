#include "platform/system/LoopbackPeer.h"

#include <gtest/gtest.h>

#include "kit/LoopbackConnection.h"

using platform::PeerUser;
using platform::UserOfLoopbackPeer;

namespace {

/// Wine does not tell to which process a connection belongs.
TEST(LoopbackPeerTest, AConnectionOfThisProcessIsNoOtherUsers) {
    const test_support::LoopbackConnection connection;
    EXPECT_NE(UserOfLoopbackPeer(connection.ServerPort(), connection.ClientPort()), PeerUser::Other);
}

TEST(LoopbackPeerTest, AConnectionThatDoesNotExistIsNobodys) {
    EXPECT_EQ(UserOfLoopbackPeer(1, 2), PeerUser::Unknown);
}

} // namespace
