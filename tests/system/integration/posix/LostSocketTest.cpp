#include "kit/processes/HostProcessFixture.h"

#include "formats/HostLock.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"
#include "platform/files/RemoveTree.h"
#include "text/Text.h"

#include <sys/stat.h>

namespace {

/// Hosts whose socket is not where front ends look for it.
class LostSocketTest : public HostProcessFixture {
protected:
    std::wstring SocketPath() const {
        host_lock::Holder holder;
        EXPECT_TRUE(host_lock::FindHolder(directory / L"job_list.json", holder));
        return platform::ResolveAgainst({}, holder.place);
    }

    std::string ProcessOfHost() const { return "process " + std::to_string(platform::ProcessNumber(host.Get())); }

    /// A front end of another session.
    platform::ProcessStart FrontEndElsewhere(const std::vector<std::wstring>& arguments) const {
        platform::ProcessStart start = FrontEndProcess(arguments);
        const std::string runtime = text::ToUtf8(platform::ToNativeText(directory / L"runtime"));
        ::mkdir(runtime.c_str(), 0700);
        start.environment.emplace_back(L"XDG_RUNTIME_DIR", text::FromUtf8(runtime));
        return start;
    }
};

TEST_F(LostSocketTest, AHostWhoseSocketIsRemovedIsReachedAgain) {
    StartHost();
    ASSERT_TRUE(platform::RemoveFile(SocketPath()));
    const auto listed = test_support::RunToEnd(FrontEndProcess({L"cadjobs", L"list"}));
    EXPECT_EQ(listed.exitCode, 0) << listed.output;
    ASSERT_TRUE(platform::RemoveTree(platform::ParentDirectory(SocketPath())));
    const auto started = test_support::RunToEnd(Host({L"--background"}));
    EXPECT_EQ(started.exitCode, 0) << started.output;
    const auto stopped = test_support::RunToEnd(FrontEndProcess({L"cadjobs", L"host", L"stop"}));
    EXPECT_EQ(stopped.exitCode, 0) << stopped.output;
    EXPECT_EQ(AwaitHostEnd(), 0);
}

TEST_F(LostSocketTest, AHostThatEndsLeavesNeitherSocketNorLock) {
    StartHost();
    const std::wstring socket = SocketPath();
    const std::wstring socketDirectory = platform::ParentDirectory(socket);
    ASSERT_TRUE(platform::Exists(socket));
    TestClient(endpointName).Terminate();
    EXPECT_EQ(AwaitHostEnd(), 0);
    EXPECT_FALSE(platform::Exists(socket));
    EXPECT_FALSE(platform::Exists(socketDirectory + L"\\" + endpointName + L".lock"));
}

TEST_F(LostSocketTest, AFrontEndOfAnotherSessionIsToldOfTheHostAndCanEndIt) {
    StartHost();
    const auto refused = test_support::RunToEnd(FrontEndElsewhere({L"cadjobs", L"list"}));
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_NE(refused.output.find("cannot be reached from here: " + ProcessOfHost() + ", since 20"), std::string::npos)
        << refused.output;
    EXPECT_NE(refused.output.find(text::ToUtf8(platform::ToNativeText(SocketPath()))), std::string::npos)
        << refused.output;
    const auto stopped = test_support::RunToEnd(FrontEndElsewhere({L"cadjobs", L"host", L"stop"}));
    EXPECT_EQ(stopped.exitCode, 0) << stopped.output;
    EXPECT_EQ(AwaitHostEnd(), 0);
}

TEST_F(LostSocketTest, ASocketPathThatIsTooLongIsNamedInTheForeground) {
    const std::string runtime = text::ToUtf8(platform::ToNativeText(directory.Path())) + "/" + std::string(100, 'r');
    ASSERT_EQ(::mkdir(runtime.c_str(), 0700), 0);
    platform::ProcessStart start = Host({});
    start.environment.emplace_back(L"XDG_RUNTIME_DIR", text::FromUtf8(runtime));
    const auto refused = test_support::RunToEnd(start);
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_NE(refused.output.find(runtime + "/common_controller/"), std::string::npos) << refused.output;
    EXPECT_NE(refused.output.find("bytes, at most 107 are possible"), std::string::npos) << refused.output;
}

} // namespace
