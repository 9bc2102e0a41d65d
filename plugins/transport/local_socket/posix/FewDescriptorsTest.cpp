#include "kit/SystemHelpers.h"
#include "kit/local_socket/LineFixture.h"
#include "platform/files/NativePath.h"
#include "platform/system/OwnedHandle.h"
#include "platform/system/posix/Descriptor.h"
#include "text/Text.h"

#include <cstring>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// Uses up all descriptors that this process may still open; the limit is low, so these are few.
class NoDescriptorsLeft {
public:
    NoDescriptorsLeft() {
        for (int next = Open(); next >= 0; next = Open()) {
            taken.emplace_back(platform::HandleOf(next));
        }
    }

private:
    static constexpr std::uint64_t fewDescriptors = 64;
    static int Open() { return ::open("/dev/null", O_RDONLY | O_CLOEXEC); }

    const ScopedOpenFileLimit limit{fewDescriptors};
    std::vector<platform::OwnedHandle> taken;
};

class FewDescriptorsTest : public LineFixture {
protected:
    /// A socket created in advance, for use when no other can be created.
    static platform::OwnedHandle NewSocket() {
        return platform::OwnedHandle(platform::HandleOf(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)));
    }

    /// Everything that the engine sends to this front end before it closes the connection.
    std::string ConnectAndReadAll(const platform::OwnedHandle& socket) const {
        const int descriptor = platform::DescriptorOf(socket.Get());
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const std::string path = text::ToUtf8(local_socket::LocalPlace(place));
        std::memcpy(address.sun_path, path.data(), path.size());
        EXPECT_EQ(::connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
        std::string all;
        char bytes[100];
        for (ssize_t count = ::read(descriptor, bytes, sizeof(bytes)); count > 0;
             count = ::read(descriptor, bytes, sizeof(bytes))) {
            all.append(bytes, static_cast<std::size_t>(count));
        }
        return all;
    }
};

TEST_F(FewDescriptorsTest, AnEngineThatMayOpenNoMoreFilesTellsFrontEndsSo) {
    const auto engine = Engine();
    const platform::OwnedHandle first = NewSocket();
    const platform::OwnedHandle second = NewSocket();
    std::optional<NoDescriptorsLeft> none(std::in_place);
    EXPECT_EQ(ConnectAndReadAll(first), local_socket::EncodeBusy(0));
    EXPECT_EQ(ConnectAndReadAll(second), local_socket::EncodeBusy(0));
    none.reset();
    const auto lines = log.lines.All();
    ASSERT_EQ(lines.size(), 1u) << testing::PrintToString(lines);
    EXPECT_NE(lines[0].find(L"the system gives this process no more open files"), std::wstring::npos) << lines[0];
    EXPECT_TRUE(MakeClient()->IsConnected());
}

TEST_F(FewDescriptorsTest, AFrontEndThatMayOpenNoMoreFilesSaysSo) {
    const auto engine = Engine();
    auto network = local_socket::MakeLocalNetwork(log.Function());
    const NoDescriptorsLeft none;
    const local_socket::Connection connection = network->Connect(place);
    EXPECT_FALSE(connection.channel);
    EXPECT_FALSE(connection.isBusy);
    EXPECT_NE(connection.failure.find(L"Too many open files: this process may have 64 (ulimit -n)"), std::wstring::npos)
        << connection.failure;
}

} // namespace
