#include "CommonControllerLib/EventTransmitterManager.h"

#include "kit/doubles/ScriptedTransmitter.h"
#include "kit/modules/ModuleFiles.h"
#include "platform/system/SharedLibrary.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace {

using test_modules::ModulePath;

TEST(EventTransmitterManagerTest, AModuleThatDoesNotExistGivesNoTransmitter) {
    EventTransmitterManager manager(ModulePath(L"no_such_module"));
    EXPECT_EQ(manager.GetEventTransmitter(L"any"), nullptr);
}

TEST(EventTransmitterManagerTest, AnEmptyPathGivesNoTransmitter) {
    EXPECT_EQ(EventTransmitterManager(L"").GetEventTransmitter(L"any"), nullptr);
}

TEST(EventTransmitterManagerTest, AModuleWithoutTheExportGivesNoTransmitter) {
    EventTransmitterManager manager(ModulePath(L"transmitter_without_export"));
    EXPECT_EQ(manager.GetEventTransmitter(L"any"), nullptr);
}

TEST(EventTransmitterManagerTest, TheIdentifierReachesTheModuleUnchanged) {
    ScriptedTransmitter first;
    ScriptedTransmitter second;
    EventTransmitterManager manager(ModulePath(L"transmitter_by_address"));
    EXPECT_EQ(manager.GetEventTransmitter(first.Id()), &first);
    EXPECT_EQ(manager.GetEventTransmitter(second.Id()), &second);
    EXPECT_EQ(manager.GetEventTransmitter(first.Id()), &first);
}

TEST(EventTransmitterManagerTest, AModuleMayHaveNoTransmitterForAnIdentifier) {
    EventTransmitterManager manager(ModulePath(L"transmitter_by_address"));
    EXPECT_EQ(manager.GetEventTransmitter(L"unknown"), nullptr);
    EXPECT_EQ(manager.GetEventTransmitter(L""), nullptr);
}

TEST(EventTransmitterManagerTest, AnExceptionOfTheModulePassesThrough) {
    EventTransmitterManager manager(ModulePath(L"transmitter_throwing"));
    EXPECT_THROW(manager.GetEventTransmitter(L"any"), std::runtime_error);
}

TEST(EventTransmitterManagerTest, TwoManagersOnOnePathLoadTheModuleTwiceAndNeverReleaseIt) {
    const std::wstring path = ModulePath(L"transmitter_watched");
    bool isUnloaded = false;
    void* const module = platform::LoadModule(path);
    reinterpret_cast<void (*)(bool*)>(platform::FindExport(module, "WatchUnload"))(&isUnloaded);
    {
        const EventTransmitterManager first(path);
        const EventTransmitterManager second(path);
    }
    platform::FreeModule(module); // the test's own
    platform::FreeModule(module);
    EXPECT_FALSE(isUnloaded);
    platform::FreeModule(module);
    EXPECT_TRUE(isUnloaded);
}

} // namespace
