#include "platform/processes/ForkServer.h"

#include <gtest/gtest.h>

using platform::ForkServer;
using platform::ProcessStart;

namespace {

ProcessStart Program(const std::wstring& path) {
    ProcessStart start;
    start.program = path;
    return start;
}

} // namespace

TEST(ForkServerTest, WithoutAServerThereIsNoCopy) {
    ForkServer server;
    EXPECT_FALSE(server.IsRunning());
    EXPECT_FALSE(server.Fork("request"));
}

TEST(ForkServerTest, AProgramThatIsMissingIsNoServer) {
    ForkServer server;
    EXPECT_EQ(server.Start(Program(L"\\no\\such\\program")).kind, platform::ErrorKind::NotFound);
    EXPECT_FALSE(server.IsRunning());
    EXPECT_FALSE(server.Fork("request"));
}

TEST(ForkServerTest, AProgramThatEndsAtOnceMakesNoCopy) {
    ForkServer server;
    ASSERT_FALSE(server.Start(Program(L"\\bin\\true")));
    EXPECT_FALSE(server.Fork("request"));
    EXPECT_FALSE(server.IsRunning());
}

TEST(ForkServerTest, AProgramThatDoesNotAnswerMakesNoCopyAndIsEnded) {
    ForkServer server;
    ProcessStart start = Program(L"\\bin\\sh");
    start.arguments = {L"-c", L"while :; do sleep 1; done"};
    ASSERT_FALSE(server.Start(start));
    EXPECT_TRUE(server.IsRunning());
    EXPECT_FALSE(server.Fork("request"));
    EXPECT_FALSE(server.IsRunning());
}

TEST(ForkServerTest, ARequestThatIsTooLongIsNotSent) {
    ForkServer server;
    ASSERT_FALSE(server.Start(Program(L"\\bin\\true")));
    EXPECT_FALSE(server.Fork(std::string(std::size_t{1} << 20, 'x')));
}

TEST(ForkServerTest, AVariableThatTheProcessWasNotStartedWithIsNotOverwritten) {
    EXPECT_FALSE(platform::OverwriteStartVariable(L"CONTROLLER_NO_SUCH_VARIABLE", L"value"));
    EXPECT_FALSE(platform::OverwriteStartVariable(L"CONTROLLER_NO_SUCH_VARIABLE", L""));
}
