#include "platform/system/posix/ConnectionTable.h"

#include <gtest/gtest.h>

#include "kit/LoopbackConnection.h"
#include "platform/system/LoopbackPeer.h"

using platform::ConnectionEnd;
using platform::FindConnectionEnd;

namespace {

constexpr char table[] =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout inode\n"
    "   0: 0100007F:1F90 00000000:0000 0A 00000000:00000000 00:00000000 00000000  1000        0 1061 1 0\n"
    "   1: 0100007F:D431 0100007F:1F90 01 00000000:00000000 00:00000000 00000000  1001        0 2061 1 0\n"
    "   2: 0100007F:1F90 0100007F:D431 01 00000000:00000000 00:00000000 00000000  1000        0 2062 1 0\n"
    "   3: 0200007F:D432 0100007F:1F90 01 00000000:00000000 00:00000000 00000000  1002        0 2063 1 0\n"
    "   5: 0100007F:D434 0100007F:1F90 05 00000000:00000000 00:00000000 00000000     0        0 0 1 0\n"
    "   4: 0000000000000000FFFF00000100007F:D433 0000000000000000FFFF00000100007F:1F90 01 0:0 00:0 0  1003 0 2064 1 "
    "0\n";

TEST(ConnectionTableTest, AConnectionIsFoundByBothItsPorts) {
    EXPECT_EQ(FindConnectionEnd(table, 0xD431, 0x1F90), (ConnectionEnd{1001, true}));
    EXPECT_EQ(FindConnectionEnd(table, 0x1F90, 0xD431), (ConnectionEnd{1000, true}));
    EXPECT_EQ(FindConnectionEnd(table, 0xD431, 0x1F91), std::nullopt);
}

TEST(ConnectionTableTest, TheKernelListsAConnectionOfThisProcessAsTheUsersOwn) {
    const test_support::LoopbackConnection connection;
    EXPECT_EQ(platform::UserOfLoopbackPeer(connection.ServerPort(), connection.ClientPort()), platform::PeerUser::Own);
}

TEST(ConnectionTableTest, AProgramMayUseTheAddressAsPartOfIpv6) {
    EXPECT_EQ(FindConnectionEnd(table, 0xD433, 0x1F90), (ConnectionEnd{1003, true}));
}

TEST(ConnectionTableTest, AnEndThatWasClosedIsNobodys) {
    EXPECT_EQ(FindConnectionEnd(table, 0xD434, 0x1F90), (ConnectionEnd{0, false}));
}

TEST(ConnectionTableTest, OtherAddressesAreNotLoopback) {
    EXPECT_EQ(FindConnectionEnd(table, 0xD432, 0x1F90), std::nullopt);
}

TEST(ConnectionTableTest, WhatIsNoTableHasNoConnections) {
    for (const char* const text :
         {"", "\n\n", "   1:", "1: 0100007F:D431 0100007F:1F90", "1: 0100007F 0100007F 1 2 3 4 5",
          "1: 0100007F:D431 0100007F:1F90 01 0:0 00:0 0 root 0"}) {
        EXPECT_EQ(FindConnectionEnd(text, 0xD431, 0x1F90), std::nullopt) << text;
    }
}

} // namespace
