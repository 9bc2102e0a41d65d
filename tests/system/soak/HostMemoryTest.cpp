#include "kit/processes/HostProcessFixture.h"
#include "system/soak/HostFigures.h"

namespace {

/// A host lives for months: memory used for one large request must be returned.
class HostMemoryTest : public HostProcessFixture {
protected:
    std::int64_t PrivateBytes() const { return FiguresOf(host.Get()).privateBytes; }
};

TEST_F(HostMemoryTest, WhatLargeAnswersTookIsGivenBack) {
    SaveLongList();
    StartHost();
    TestClient frontEnd(endpointName);
    frontEnd.Delete({L"1"});
    const std::int64_t before = PrivateBytes();
    for (int number = 2; number < 8; ++number) {
        frontEnd.Jobs();
        frontEnd.Delete({std::to_wstring(number)});
    }
    constexpr std::int64_t noise = 4 << 20;
    // A response is freed shortly after its front end has received it.
    Await("the host to give memory back", [&] { return PrivateBytes() - before < noise; });
}

} // namespace
