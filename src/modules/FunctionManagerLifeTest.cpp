#include "CommonControllerLib/FunctionManager.h"

#include "kit/modules/ModuleFiles.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using test_modules::ModulePath;
using test_modules::Script;
using test_modules::ScriptedModule;

const std::wstring pathA = ModulePath(L"recording_module_a");
const std::wstring pathB = ModulePath(L"recording_module_b");

/// Both modules report to the script, and only the manager holds them.
class FunctionManagerLifeTest : public testing::Test {
protected:
    std::unique_ptr<FunctionManager> Load(const std::vector<std::wstring>& paths) {
        auto manager = std::make_unique<FunctionManager>(paths);
        for (const std::wstring& path : paths) {
            ScriptedModule(path, script).Release();
        }
        return manager;
    }

    long Run(const FunctionManager& manager) {
        std::wstring output;
        return manager.CallFunction("RunScenario", L"", output, nullptr);
    }

    Script script;
};

TEST_F(FunctionManagerLifeTest, DestructorFreesTheModulesInAscendingOrderOfTheirPaths) {
    auto manager = Load({pathB, pathA});
    EXPECT_TRUE(script.unloaded.empty());
    manager.reset();
    EXPECT_EQ(script.unloaded, (std::vector<std::string>{"recording_module_a", "recording_module_b"}));
}

TEST_F(FunctionManagerLifeTest, ModulesStayLoadedBetweenCalls) {
    const auto manager = Load({pathA});
    EXPECT_EQ(Run(*manager), 0);
    EXPECT_EQ(Run(*manager), 0);
    EXPECT_TRUE(script.unloaded.empty());
}

TEST_F(FunctionManagerLifeTest, DestructorPassesOverModulesThatCouldNotBeLoaded) {
    auto manager = Load({pathA});
    EXPECT_FALSE(manager->LoadFunctionDll(ModulePath(L"no_such_module")));
    manager.reset();
    EXPECT_EQ(script.unloaded, std::vector<std::string>{"recording_module_a"});
}

TEST_F(FunctionManagerLifeTest, CopySharesTheHandlesAndLoadsNothingAgain) {
    ScriptedModule holder(pathA, script);
    FunctionManager original({pathA});
    const FunctionManager copy(original);
    EXPECT_EQ(holder.GetFunctionsCallCount(), 1);
    EXPECT_EQ(Run(copy), 0);
    EXPECT_TRUE(original.LoadFunctionDll(pathA));
    test_modules::AddReference(pathA); // released by the copy's destructor, which took no reference
}

TEST_F(FunctionManagerLifeTest, AssignmentTakesBothTables) {
    ScriptedModule holder(pathA, script);
    const FunctionManager original({pathA});
    FunctionManager assigned({});
    assigned = original;
    test_modules::AddReference(pathA);
    EXPECT_EQ(Run(assigned), 0);
    EXPECT_TRUE(assigned.LoadFunctionDll(pathA));
    EXPECT_EQ(holder.GetFunctionsCallCount(), 1);
}

TEST_F(FunctionManagerLifeTest, SelfAssignmentDoesNothing) {
    FunctionManager manager({ModulePath(L"empty_module")});
    const FunctionManager& same = manager;
    manager = same;
    EXPECT_TRUE(manager.LoadFunctionDll(ModulePath(L"empty_module")));
}

} // namespace
