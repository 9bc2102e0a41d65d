#include "kit/front_end/CadjobsFixture.h"

#include "platform/files/NativePath.h"
#include "text/Text.h"

namespace {

/// The settings file is broken JSON.
class StopHostTest : public CadjobsFixture {
protected:
    StopHostTest() { UseSettings("{\"version\":1,\n\"logFile\":}"); }

    void AddHost(std::int64_t process) {
        host.hostsOfSettingsFile.emplace_back();
        host.hostsOfSettingsFile.back().process = process;
    }
    std::string Problem() const {
        return "cadjobs: The settings cannot be used: " +
               text::ToUtf8(platform::ToNativeText(directory / L"settings.json")) +
               ", line 2, column 11: not JSON: Invalid value. ";
    }
};

TEST_F(StopHostTest, WithBrokenSettingsTheHostThatWasStartedWithThemIsEnded) {
    AddHost(4711);
    EXPECT_EQ(Run({L"host", L"stop"}), 0);
    EXPECT_EQ(console.errors, Problem() + "The host that was started with this file is asked to end: process 4711.\n");
    EXPECT_EQ(console.output, "The host has ended.\n");
    EXPECT_EQ(host.endCount, 1);
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(StopHostTest, WithBrokenSettingsNoOtherHostIsEnded) {
    EXPECT_EQ(Run({L"host", L"stop"}), 2);
    EXPECT_EQ(console.errors.find(Problem() + "So it is not known which host to end"), 0U) << console.errors;
    AddHost(4711);
    AddHost(4712);
    EXPECT_EQ(Run({L"host", L"stop"}), 2);
    EXPECT_NE(console.errors.find("started with this file: process 4711; process 4712."), std::string::npos)
        << console.errors;
    EXPECT_EQ(host.endCount, 0);
    EXPECT_TRUE(host.Requests().empty());
    EXPECT_EQ(console.output, "");
}

TEST_F(StopHostTest, WithBrokenSettingsAHostThatCannotBeAskedIsNamed) {
    AddHost(4711);
    host.hostEnd = front_end::HostEnd::CannotBeAsked;
    EXPECT_EQ(Run({L"host", L"stop"}), 2);
    EXPECT_NE(console.errors.find("end the process of the host yourself; started with this file: process 4711."),
              std::string::npos)
        << console.errors;
    host.hostEnd = front_end::HostEnd::StillRunning;
    EXPECT_EQ(Run({L"host", L"stop"}), 1);
}

} // namespace
