#include "CommonControllerLib/CLIPresenter.h"
#include "CommonControllerLib/EventTransmitterManager.h"
#include "controller_plugins/EventTransmitterExtension.h"
#include "kit/TemporaryDirectory.h"
#include "kit/doubles/RecordingCompanion.h"
#include "kit/doubles/RecordingHandler.h"
#include "kit/doubles/ScriptedTransmitter.h"
#include "kit/doubles/TurnedClock.h"
#include "kit/modules/ModuleFiles.h"
#include "platform/files/FileSystem.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

class ModuleTest : public testing::Test {
protected:
    EventTransmitter* Get(const std::wstring& id) { return manager.GetEventTransmitter(id); }

    const std::wstring modulePath = test_modules::ModulePath(L"in_process");
    EventTransmitterManager manager{modulePath};
};

TEST_F(ModuleTest, AnIdentifierGivesTheSameTransmitterEachTime) {
    ASSERT_NE(Get(L"engine:same"), nullptr);
    EXPECT_EQ(Get(L"engine:same"), Get(L"engine:same"));
    EXPECT_EQ(Get(L"same"), Get(L"client:same"));
    EXPECT_EQ(EventTransmitterManager(modulePath).GetEventTransmitter(L"same"), Get(L"same"));
    EXPECT_NE(Get(L"same"), Get(L"same#2"));
    EXPECT_NE(Get(L"engine:same"), Get(L"engine:other"));
}

TEST_F(ModuleTest, AnIdentifierThatNamesNoLineGivesNoTransmitter) {
    EXPECT_EQ(Get(L""), nullptr);
    EXPECT_EQ(Get(L"host:jobs"), nullptr);
}

TEST_F(ModuleTest, LinesDoNotMix) {
    RecordingHandler wrong;
    RecordingHandler right;
    Get(L"engine:wrong")->AddEventHandler(L"e", &wrong);
    Get(L"engine:right")->AddEventHandler(L"e", &right);
    Get(L"right")->SendEvent(L"e", L"1");
    right.handled.WaitFor(1);
    Get(L"wrong")->SendEvent(L"e", L"2");
    EXPECT_EQ(wrong.handled.WaitFor(1), std::vector<std::wstring>{L"2"});
    EXPECT_EQ(right.handled.WaitFor(1), std::vector<std::wstring>{L"1"});
    Get(L"engine:wrong")->AddEventHandler(L"e", nullptr);
    Get(L"engine:right")->AddEventHandler(L"e", nullptr);
}

TEST_F(ModuleTest, APresenterEnqueuesThroughTheLine) {
    const TemporaryDirectory directory;
    RecordingCompanion companion;
    companion.messages.jobsFiles[L"jobs.json"] = std::vector<EnqueueJobsInfo>(1);
    companion.messages.Add(L"result", JobEnqueueResult{{{L"a", 12}, {L"", 0}}, L"guid 1", {}});
    EventTransmitter* const engine = Get(L"engine:chain");
    EventTransmitterExtension* const extension = manager.GetExtension(L"engine:chain");
    ASSERT_NE(extension, nullptr);
    RecordingHandler answering([extension](const std::wstring&) {
        extension->SendEventTo(extension->CurrentPeer(), L"EnqueueJobsFinish", L"result");
    });
    engine->AddEventHandler(L"EnqueueJobs", &answering);

    TurnedClock clock;
    CLIPresenter presenter(L"chain", modulePath);
    presenter.EnqueueJobsFromFile(L"jobs.json", directory / L"out.txt");

    const std::string end(platform::lineEnd);
    EXPECT_EQ(ReadTextFile(directory / L"out.txt"), "12,Queued" + end + "-1,Failed" + end);
    EXPECT_EQ(answering.handled.WaitFor(1), std::vector<std::wstring>{L"EnqueueJobs: guid 1"});
    EXPECT_EQ(clock.SleepCount(), 0);
    presenter.LeaveEventTransmitter(Get(L"chain"));
    engine->AddEventHandler(L"EnqueueJobs", nullptr);
    ScriptedTransmitter keeper; // keeps the handler reachable that a presenter leaks
    presenter.SetEventTransmitter(&keeper);
}

} // namespace
