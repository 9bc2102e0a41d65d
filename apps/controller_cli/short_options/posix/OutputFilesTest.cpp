#include "kit/front_end/ControllerCliFixture.h"

#include "CommonControllerLib/ControllerLogManager.h"
#include "formats/Messages.h"
#include "platform/files/NativePath.h"

#include <unistd.h>

namespace {

/// Output files that exist on this system only.
class OutputFilesTest : public ControllerCliFixture {
protected:
    OutputFilesTest() {
        WriteTextFile(directory / L"jobs.json",
                      R"({"EnqueueJobs":[{"inputFileSets":[["a"]]},{"inputFileSets":[["b"]]}]})");
        host.transmitter.onSend = [this](const ScriptedTransmitter::Event& request) {
            ScheduledRequest info;
            EXPECT_TRUE(messages::Deserialize(request.payload, info));
            JobEnqueueResult result;
            result.requestId = info.requestId;
            result.jobIds = {{L"id12", 12}};
            EXPECT_TRUE(
                host.transmitter.Deliver(L"EnqueueJobsFinish", messages::Serialize(L"EnqueueJobsFinish", result)));
        };
    }

    std::wstring Native(const std::wstring& name) { return platform::ToNativeText(directory / name); }
    std::string Bytes(const std::wstring& name) { return text::ToUtf8(Native(name)); }
};

TEST_F(OutputFilesTest, LinesThatTheFileDoesNotTakeGoToStandardOutput) {
    EXPECT_EQ(Run({Native(L"jobs.json"), L"-o", L"/dev/full"}), 2);
    EXPECT_EQ(console.output, "12,Queued\n");
    EXPECT_EQ(host.Requests().size(), 1U);
    EXPECT_EQ(console.errors.find("controller_cli: The output file /dev/full cannot be written: "), 0U);
}

TEST_F(OutputFilesTest, AFileIsTheSameThroughALink) {
    const std::string before = ReadTextFile(directory / L"jobs.json");
    ASSERT_EQ(link(Bytes(L"jobs.json").c_str(), Bytes(L"hard").c_str()), 0);
    ASSERT_EQ(symlink(Bytes(L"jobs.json").c_str(), Bytes(L"soft").c_str()), 0);
    ASSERT_EQ(symlink(".", Bytes(L"sub").c_str()), 0);
    for (const wchar_t* const name : {L"hard", L"soft", L"sub/jobs.json"}) {
        console.errors.clear();
        EXPECT_EQ(Run({Native(L"jobs.json"), L"-o", Native(name)}), 2);
        EXPECT_NE(console.errors.find(" is named twice, as "), std::string::npos) << console.errors;
    }
    EXPECT_EQ(Run({Native(L"jobs.json"), L"-o", Native(L"new"), L"-l", Native(L"sub/new")}), 2);
    EXPECT_EQ(ReadTextFile(directory / L"jobs.json"), before);
    EXPECT_TRUE(host.Requests().empty());
}

TEST_F(OutputFilesTest, ADeviceMayHaveTwoRoles) {
    EXPECT_EQ(Run({Native(L"jobs.json"), L"-o", L"/dev/null", L"-l", L"/dev/null"}), 0);
    EXPECT_EQ(console.errors, "");
    ControllerLogManager::Initialize(0, L"", false);
}

} // namespace
