#include "transport/local_socket/posix/EndpointAddress.h"

#include <array>
#include <chrono>
#include <future>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "kit/Deadline.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "platform/system/Environment.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"

namespace {

using local_socket::CheckSocketDirectory;
using local_socket::ConnectTo;
using local_socket::IsSameUser;
using local_socket::ListeningPlace;
using local_socket::OpenedSocket;
using local_socket::SocketDirectory;

using namespace std::chrono_literals;

bool Contains(const std::wstring& text, const std::wstring& part) {
    return text.find(part) != std::wstring::npos;
}

/// Each test has its own run-time directory.
class EndpointAddressTest : public testing::Test {
protected:
    void SetUp() override { platform::SetEnvironment(L"XDG_RUNTIME_DIR", text::FromUtf8(runtimePath)); }
    void TearDown() override { platform::SetEnvironment(L"XDG_RUNTIME_DIR", earlier); }

    std::string PathOf(const std::string& name) const { return directory + "/" + name; }

    /// Empty if the directory is trusted.
    std::wstring DirectoryProblem(bool create) const {
        std::wstring problem;
        const bool isTrusted = CheckSocketDirectory(directory, create, problem);
        EXPECT_EQ(isTrusted, problem.empty());
        return problem;
    }

    const std::wstring earlier = platform::GetEnvironment(L"XDG_RUNTIME_DIR").value_or(L"");
    const TemporaryDirectory runtime;
    const std::string runtimePath = text::ToUtf8(platform::ToNativeText(runtime.Path()));
    const std::string directory = runtimePath + "/common_controller";
};

mode_t ModeOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

TEST_F(EndpointAddressTest, TheDirectoryStandsInTheUsersOwnRuntimeDirectory) {
    EXPECT_EQ(SocketDirectory(runtimePath, geteuid()), runtimePath + "/common_controller");
}

TEST_F(EndpointAddressTest, WithoutAnOwnRuntimeDirectoryItStandsInTmp) {
    EXPECT_EQ(SocketDirectory(std::nullopt, 1000), "/tmp/common_controller-1000");
    EXPECT_EQ(SocketDirectory("", 1000), "/tmp/common_controller-1000");
    EXPECT_EQ(SocketDirectory("relative", 1000), "/tmp/common_controller-1000");
    EXPECT_EQ(SocketDirectory(runtimePath + "/missing", geteuid()),
              "/tmp/common_controller-" + std::to_string(geteuid()));
    EXPECT_EQ(SocketDirectory(runtimePath, geteuid() + 1), "/tmp/common_controller-" + std::to_string(geteuid() + 1));
}

TEST_F(EndpointAddressTest, ARuntimeDirectoryWhereOthersMayWriteIsNotUsed) {
    const std::string elsewhere = "/tmp/common_controller-" + std::to_string(geteuid());
    for (const mode_t mode : {0777u, 0770u, 01777u, 0702u}) {
        ASSERT_EQ(chmod(runtimePath.c_str(), mode), 0);
        EXPECT_EQ(SocketDirectory(runtimePath, geteuid()), elsewhere) << mode;
    }
    ASSERT_EQ(chmod(runtimePath.c_str(), 0755), 0);
    EXPECT_EQ(SocketDirectory(runtimePath, geteuid()), runtimePath + "/common_controller");
}

TEST_F(EndpointAddressTest, TheDirectoryIsMadeForTheOwnerAlone) {
    EXPECT_EQ(DirectoryProblem(true), L"");
    EXPECT_EQ(ModeOf(directory), 0700u);
    EXPECT_EQ(DirectoryProblem(true), L"");
    EXPECT_EQ(DirectoryProblem(false), L"");
}

TEST_F(EndpointAddressTest, LookingMakesNoDirectory) {
    EXPECT_EQ(DirectoryProblem(false), L"");
    EXPECT_FALSE(platform::Exists(text::FromUtf8(directory)));
}

TEST_F(EndpointAddressTest, ADirectoryThatOthersMayEnterIsRefusedByBothEnds) {
    for (const mode_t mode : {0755u, 0710u, 0701u, 01700u, 0500u}) {
        mkdir(directory.c_str(), 0700);
        chmod(directory.c_str(), mode);
        ListeningPlace place;
        EXPECT_TRUE(Contains(place.Take("host").failure, L"set its mode to 0700")) << mode;
        EXPECT_TRUE(Contains(ConnectTo("host", 0ms).failure, L"set its mode to 0700")) << mode;
    }
}

TEST_F(EndpointAddressTest, ALinkInPlaceOfTheDirectoryIsRefused) {
    const std::string elsewhere = runtimePath + "/elsewhere";
    mkdir(elsewhere.c_str(), 0700);
    ASSERT_EQ(symlink(elsewhere.c_str(), directory.c_str()), 0);
    EXPECT_TRUE(Contains(DirectoryProblem(true), L"it is no folder (or a link to one)"));
}

TEST_F(EndpointAddressTest, ADirectoryOfAnotherUserIsRefused) {
    if (geteuid() != 0) {
        GTEST_SKIP() << "only root can make a folder of another user";
    }
    mkdir(directory.c_str(), 0700);
    ASSERT_EQ(chown(directory.c_str(), 12345, 12345), 0);
    EXPECT_TRUE(Contains(DirectoryProblem(true), L"it belongs to another user"));
}

TEST_F(EndpointAddressTest, AFrontEndFindsTheEngineThatListens) {
    ListeningPlace place;
    const OpenedSocket listening = place.Take("host");
    ASSERT_EQ(listening.failure, L"");
    const OpenedSocket connected = ConnectTo("host", 0ms);
    EXPECT_EQ(connected.failure, L"");
    ASSERT_TRUE(connected.socket);
    EXPECT_TRUE(IsSameUser(platform::DescriptorOf(connected.socket.Get())));
    EXPECT_EQ(ModeOf(PathOf("host.socket")), 0600u);
}

/// An engine whose backlog of connections is full.
class EndpointAddressTest_BusyEngine : public EndpointAddressTest {
protected:
    void SetUp() override {
        EndpointAddressTest::SetUp();
        engine = place.Take("host");
        ASSERT_EQ(::listen(platform::DescriptorOf(engine.socket.Get()), 0), 0);
        waiting = ConnectTo("host", 0ms);
        ASSERT_TRUE(waiting.socket);
    }

    int AcceptOne() const {
        return ::accept4(platform::DescriptorOf(engine.socket.Get()), nullptr, nullptr, SOCK_CLOEXEC);
    }

    ListeningPlace place;
    OpenedSocket engine;
    OpenedSocket waiting;
};

TEST_F(EndpointAddressTest_BusyEngine, IsWaitedForAndThenToldOf) {
    const auto begin = std::chrono::steady_clock::now();
    const OpenedSocket refused = ConnectTo("host", 50ms);
    EXPECT_FALSE(refused.socket);
    EXPECT_TRUE(Contains(refused.failure, L"is busy and takes no front ends"))
        << testing::PrintToString(refused.failure);
    EXPECT_TRUE(refused.isBusy);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 50ms);
}

TEST_F(EndpointAddressTest_BusyEngine, TakesTheOneThatWaitedForIt) {
    std::future<OpenedSocket> connecting =
        std::async(std::launch::async, [] { return ConnectTo("host", test_support::timeout); });
    const platform::OwnedHandle first(platform::HandleOf(AcceptOne()));
    const OpenedSocket connected = connecting.get();
    ASSERT_TRUE(connected.socket) << testing::PrintToString(connected.failure);
    EXPECT_NE(fcntl(platform::DescriptorOf(connected.socket.Get()), F_GETFL) & O_NONBLOCK, 0);
}

TEST_F(EndpointAddressTest, SocketsAreNotInheritedByOtherPrograms) {
    ListeningPlace place;
    const OpenedSocket listening = place.Take("host");
    const OpenedSocket connected = ConnectTo("host", 0ms);
    EXPECT_EQ(fcntl(platform::DescriptorOf(listening.socket.Get()), F_GETFD), FD_CLOEXEC);
    EXPECT_EQ(fcntl(platform::DescriptorOf(connected.socket.Get()), F_GETFD), FD_CLOEXEC);
}

TEST_F(EndpointAddressTest, WhereNobodyListensThereIsNoSocketAndNoComplaint) {
    const OpenedSocket connected = ConnectTo("host", 0ms);
    EXPECT_FALSE(connected.socket);
    EXPECT_EQ(connected.failure, L"");
}

TEST_F(EndpointAddressTest, ThePlaceIsLeftEmpty) {
    {
        ListeningPlace place;
        const OpenedSocket listening = place.Take("host");
    }
    EXPECT_FALSE(platform::Exists(text::FromUtf8(PathOf("host.socket"))));
    EXPECT_FALSE(platform::Exists(text::FromUtf8(PathOf("host.lock"))));
}

TEST_F(EndpointAddressTest, ASecondEngineIsRefusedAndTheFirstStaysReachable) {
    ListeningPlace first;
    const OpenedSocket listening = first.Take("host");
    {
        ListeningPlace second;
        const OpenedSocket refused = second.Take("host");
        EXPECT_FALSE(refused.socket);
        EXPECT_TRUE(Contains(refused.failure, L"another engine listens there"));
    }
    EXPECT_TRUE(ConnectTo("host", 0ms).socket);
}

TEST_F(EndpointAddressTest, TheSocketOfADeadEngineIsReplaced) {
    ListeningPlace dead;
    ASSERT_EQ(dead.Take("host").failure, L"");
    ASSERT_EQ(rename(PathOf("host.socket").c_str(), PathOf("next.socket").c_str()), 0);
    const OpenedSocket nobody = ConnectTo("next", 0ms);
    EXPECT_FALSE(nobody.socket);
    EXPECT_EQ(nobody.failure, L"");

    ListeningPlace place;
    const OpenedSocket listening = place.Take("next");
    EXPECT_EQ(listening.failure, L"");
    EXPECT_TRUE(ConnectTo("next", 0ms).socket);
}

TEST_F(EndpointAddressTest, SomethingElseInPlaceOfTheSocketIsLeftAlone) {
    ASSERT_EQ(DirectoryProblem(true), L"");
    WriteTextFile(text::FromUtf8(PathOf("host.socket")), "mine");
    ListeningPlace place;
    EXPECT_TRUE(Contains(place.Take("host").failure, L"something that is no socket stands there"));
    EXPECT_EQ(ReadTextFile(text::FromUtf8(PathOf("host.socket"))), "mine");
}

TEST_F(EndpointAddressTest, APathThatIsTooLongIsToldWithItsLengthAndTheLimit) {
    const std::string longDirectory = runtimePath + "/" + std::string(60, 'r');
    ASSERT_EQ(mkdir(longDirectory.c_str(), 0700), 0);
    platform::SetEnvironment(L"XDG_RUNTIME_DIR", text::FromUtf8(longDirectory));
    ListeningPlace place;
    EXPECT_TRUE(Contains(place.Take("host").failure, L"bytes, at most 107 are possible"));
    EXPECT_TRUE(Contains(ConnectTo("host", 0ms).failure, L"bytes, at most 107 are possible"));
}

TEST_F(EndpointAddressTest, APlaceThatIsThereIsNotTakenAgain) {
    ListeningPlace place;
    const OpenedSocket listening = place.Take("host");
    const OpenedSocket again = place.TakeAgainIfLost();
    EXPECT_FALSE(again.socket);
    EXPECT_EQ(again.failure, L"");
}

TEST_F(EndpointAddressTest, APlaceWhoseFilesWereRemovedIsTakenAgain) {
    ListeningPlace place;
    OpenedSocket listening = place.Take("host");
    for (const std::vector<const char*>& removed :
         std::vector<std::vector<const char*>>{{"host.socket"}, {"host.lock"}, {"host.socket", "host.lock"}}) {
        for (const char* const file : removed) {
            ASSERT_EQ(unlink(PathOf(file).c_str()), 0) << file;
        }
        listening = place.TakeAgainIfLost();
        ASSERT_TRUE(listening.socket) << testing::PrintToString(listening.failure);
        EXPECT_TRUE(ConnectTo("host", 0ms).socket);
        ListeningPlace second;
        EXPECT_TRUE(Contains(second.Take("host").failure, L"another engine listens there"));
    }
}

TEST_F(EndpointAddressTest, APlaceWhoseDirectoryWasRemovedIsTakenAgain) {
    ListeningPlace place;
    OpenedSocket listening = place.Take("host");
    ASSERT_TRUE(platform::RemoveTree(text::FromUtf8(directory)));
    listening = place.TakeAgainIfLost();
    ASSERT_TRUE(listening.socket) << testing::PrintToString(listening.failure);
    EXPECT_EQ(ModeOf(directory), 0700u);
    EXPECT_TRUE(ConnectTo("host", 0ms).socket);
}

TEST_F(EndpointAddressTest, AnEngineFollowsTheRuntimeDirectoryWhenItGoesAndComesBack) {
    const std::string name = "test-" + std::to_string(getpid());
    ListeningPlace place;
    OpenedSocket listening = place.Take(name);
    const std::string away = runtimePath + ".away";
    ASSERT_EQ(rename(runtimePath.c_str(), away.c_str()), 0);
    listening = place.TakeAgainIfLost();
    EXPECT_TRUE(listening.socket) << testing::PrintToString(listening.failure);
    const std::string meanwhile = local_socket::SocketPathOf(name);
    EXPECT_EQ(meanwhile, "/tmp/common_controller-" + std::to_string(geteuid()) + "/" + name + ".socket");
    EXPECT_TRUE(ConnectTo(name, 0ms).socket);
    ASSERT_EQ(rename(away.c_str(), runtimePath.c_str()), 0);
    listening = place.TakeAgainIfLost();
    EXPECT_TRUE(listening.socket) << testing::PrintToString(listening.failure);
    EXPECT_TRUE(ConnectTo(name, 0ms).socket);
    EXPECT_FALSE(platform::Exists(text::FromUtf8(meanwhile)));
}

TEST_F(EndpointAddressTest, APlaceThatAnotherEngineHasTakenMeanwhileIsNotTakenFromIt) {
    ListeningPlace place;
    const OpenedSocket lost = place.Take("host");
    ASSERT_TRUE(platform::RemoveTree(text::FromUtf8(directory)));
    ListeningPlace other;
    const OpenedSocket listening = other.Take("host");
    ASSERT_TRUE(listening.socket);
    const OpenedSocket refused = place.TakeAgainIfLost();
    EXPECT_TRUE(Contains(refused.failure, L"another engine listens there"));
    place.Leave();
    EXPECT_TRUE(ConnectTo("host", 0ms).socket);
}

TEST_F(EndpointAddressTest, WhatDeadEnginesLeftIsRemovedAndWhatLivesIsNot) {
    ListeningPlace alive;
    const OpenedSocket living = alive.Take("alive");
    const platform::OwnedHandle dead(platform::HandleOf(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    PathOf("dead.socket").copy(address.sun_path, sizeof(address.sun_path) - 1);
    ASSERT_EQ(::bind(platform::DescriptorOf(dead.Get()), reinterpret_cast<const sockaddr*>(&address), sizeof(address)),
              0);
    WriteTextFile(text::FromUtf8(PathOf("dead.lock")), "");
    ListeningPlace place;
    const OpenedSocket listening = place.Take("host");
    EXPECT_FALSE(platform::Exists(text::FromUtf8(PathOf("dead.socket"))));
    EXPECT_FALSE(platform::Exists(text::FromUtf8(PathOf("dead.lock"))));
    EXPECT_TRUE(ConnectTo("alive", 0ms).socket);
}

TEST_F(EndpointAddressTest, BothEndsOfAPairOfThisProcessAreTheSameUser) {
    std::array<int, 2> pair{};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair.data()), 0);
    EXPECT_TRUE(IsSameUser(pair[0]));
    EXPECT_FALSE(IsSameUser(-1));
    close(pair[0]);
    close(pair[1]);
}

} // namespace
