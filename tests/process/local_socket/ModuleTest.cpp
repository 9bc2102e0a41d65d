#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/TemporaryDirectory.h"
#include "kit/doubles/RecordingHandler.h"
#include "kit/local_socket/EndpointNames.h"
#include "kit/local_socket/Module.h"

namespace {

using Payloads = std::vector<std::wstring>;

std::wstring NewPlace() {
    const std::string name = NewEndpointName();
    return {name.begin(), name.end()};
}

TEST(ModuleTest, RequestAndAnswerGoThroughTheLoadedModule) {
    const std::wstring place = NewPlace();
    EventTransmitter* const engine = TransmitterFromModule(L"engine:" + place);
    EventTransmitter* const client = TransmitterFromModule(L"client:" + place);
    ASSERT_NE(engine, nullptr);
    ASSERT_NE(client, nullptr);
    EventTransmitterExtension* const atEngine = ExtensionFromModule(L"engine:" + place);
    ASSERT_NE(atEngine, nullptr);
    EXPECT_TRUE(atEngine->IsConnected());
    EXPECT_TRUE(ExtensionFromModule(L"client:" + place)->IsConnected());
    RecordingHandler request([&](const std::wstring& payload) {
        EXPECT_NE(atEngine->CurrentPeer(), 0u);
        atEngine->SendEventTo(atEngine->CurrentPeer(), L"CheckJobStatusResponse", payload + L" is running");
    });
    RecordingHandler response;
    RecordingHandler progress;
    engine->AddEventHandler(L"CheckJobStatusRequest", &request);
    client->AddEventHandler(L"CheckJobStatusResponse", &response);
    client->AddEventHandler(L"UpdateProgress", &progress);

    EXPECT_TRUE(client->SendEvent(L"CheckJobStatusRequest", L"1"));
    EXPECT_EQ(response.payloads.WaitFor(1), Payloads{L"1 is running"});
    EXPECT_TRUE(engine->SendEvent(L"UpdateProgress", L"30"));
    EXPECT_EQ(progress.payloads.WaitFor(1), Payloads{L"30"});
    EXPECT_EQ(atEngine->CurrentPeer(), 0u);

    engine->AddEventHandler(L"CheckJobStatusRequest", nullptr);
    client->AddEventHandler(L"CheckJobStatusResponse", nullptr);
    client->AddEventHandler(L"UpdateProgress", nullptr);
}

TEST(ModuleTest, TheSameIdGivesTheSameTransmitter) {
    const std::wstring place = NewPlace();
    EventTransmitter* const client = TransmitterFromModule(L"client:" + place);
    EventTransmitter* const engine = TransmitterFromModule(L"engine:" + place);
    EXPECT_NE(client, engine);
    EXPECT_EQ(TransmitterFromModule(L"client:" + place), client);
    EXPECT_EQ(TransmitterFromModule(L"engine:" + place), engine);
    EXPECT_NE(TransmitterFromModule(L"client:" + place + L"x"), client);
}

TEST(ModuleTest, AnotherIdGivesNoTransmitterAndALogLine) {
    const TemporaryDirectory directory;
    ControllerCSWrapper::ChangeLogFilePath(directory / L"log.txt");
    NewPlace();
    EXPECT_EQ(TransmitterFromModule(L""), nullptr);
    EXPECT_EQ(TransmitterFromModule(L"host"), nullptr);
    EXPECT_EQ(TransmitterFromModule(L"engine:../host"), nullptr);
    ControllerCSWrapper::ChangeLogFilePath(L"");
    const std::string log = ReadTextFile(directory / L"log.txt");
    for (const std::string line :
         {"No event line \"\":", "No event line \"host\":", "No event line \"engine:../host\":"}) {
        EXPECT_NE(log.find(line), std::string::npos) << log;
    }
}

} // namespace
