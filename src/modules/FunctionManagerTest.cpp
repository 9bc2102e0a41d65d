#include "CommonControllerLib/FunctionManager.h"

#include "kit/modules/ModuleFiles.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using test_modules::Call;
using test_modules::ModulePath;
using test_modules::Script;
using test_modules::ScriptedModule;

long CallFunction(const FunctionManager& manager, const std::string& function) {
    std::wstring output;
    return manager.CallFunction(function, L"input", output, nullptr);
}

long SomeCallback(const std::wstring&, const std::wstring&) {
    return 5;
}

const std::wstring pathA = ModulePath(L"recording_module_a");
const std::wstring pathB = ModulePath(L"recording_module_b");

class FunctionManagerTest : public testing::Test {
protected:
    Script script;
    ScriptedModule moduleA{pathA, script};
    ScriptedModule moduleB{pathB, script};
};

TEST_F(FunctionManagerTest, EmptyPathListMakesEveryCallMinusOne) {
    const FunctionManager manager({});
    EXPECT_EQ(CallFunction(manager, "RunScenario"), -1);
    EXPECT_EQ(CallFunction(manager, ""), -1);
}

TEST_F(FunctionManagerTest, CallReachesTheModuleWithTheCallersOwnArguments) {
    script.answer = [](const Call&, std::wstring& output) {
        output += L" filled";
        return 42L;
    };
    const FunctionManager manager({pathA});
    std::wstring output = L"given";
    EXPECT_EQ(manager.CallFunction("RunScenario", L"the request", output, SomeCallback), 42);
    EXPECT_EQ(output, L"given filled");
    ASSERT_EQ(script.calls.size(), 1U);
    EXPECT_EQ(script.calls[0].function, "RunScenario");
    EXPECT_EQ(script.calls[0].input, L"the request");
    EXPECT_EQ(script.calls[0].callback, SomeCallback);
}

TEST_F(FunctionManagerTest, NamesAreComparedExactly) {
    const FunctionManager manager({pathA});
    EXPECT_EQ(CallFunction(manager, "runscenario"), -1);
    EXPECT_EQ(CallFunction(manager, "RunScenario "), -1);
    EXPECT_EQ(CallFunction(manager, "CancelScenario"), 0);
}

TEST_F(FunctionManagerTest, NullCallbackIsPassedOn) {
    const FunctionManager manager({pathA});
    CallFunction(manager, "CancelScenario");
    ASSERT_EQ(script.calls.size(), 1U);
    EXPECT_EQ(script.calls[0].callback, nullptr);
}

TEST_F(FunctionManagerTest, SamePathGivenTwiceLoadsTheModuleOnce) {
    FunctionManager manager({pathA, pathA});
    EXPECT_TRUE(manager.LoadFunctionDll(pathA));
    EXPECT_EQ(moduleA.GetFunctionsCallCount(), 1);
}

TEST_F(FunctionManagerTest, TwoSpellingsOfOnePathRegisterTheModuleTwice) {
    const std::wstring otherSpelling = ModulePath(L".\\recording_module_a");
    const FunctionManager manager({pathA, otherSpelling});
    EXPECT_EQ(moduleA.GetFunctionsCallCount(), 2);
    EXPECT_EQ(CallFunction(manager, "RunScenario"), 0);
}

TEST_F(FunctionManagerTest, OfTwoModulesWithOneFunctionTheLaterPathWins) {
    const FunctionManager firstA({pathA, pathB});
    CallFunction(firstA, "RunScenario");
    const FunctionManager firstB({pathB, pathA});
    CallFunction(firstB, "RunScenario");
    ASSERT_EQ(script.calls.size(), 2U);
    EXPECT_EQ(script.calls[0].module, "recording_module_b");
    EXPECT_EQ(script.calls[1].module, "recording_module_a");
}

TEST_F(FunctionManagerTest, FunctionsThatOneModuleAloneServesStayReachable) {
    const FunctionManager manager({pathA, pathB});
    CallFunction(manager, "recording_module_a");
    ASSERT_EQ(script.calls.size(), 1U);
    EXPECT_EQ(script.calls[0].module, "recording_module_a");
}

TEST_F(FunctionManagerTest, ModuleThatListsNothingIsLoadedAndServesNothing) {
    FunctionManager manager({});
    EXPECT_TRUE(manager.LoadFunctionDll(ModulePath(L"empty_module")));
    EXPECT_EQ(CallFunction(manager, "RunScenario"), -1);
}

TEST_F(FunctionManagerTest, ModuleWithoutGetFunctionsIsRefusedOnceAndServesNothing) {
    FunctionManager manager({});
    const std::wstring path = ModulePath(L"module_without_get_functions");
    EXPECT_FALSE(manager.LoadFunctionDll(path));
    EXPECT_TRUE(manager.LoadFunctionDll(path));
    EXPECT_EQ(CallFunction(manager, "RunScenario"), -1);
}

TEST_F(FunctionManagerTest, RegisteredNameOfAModuleWithoutCallFunctionGivesMinusOneOnEveryCall) {
    const FunctionManager manager({ModulePath(L"module_without_call_function")});
    EXPECT_EQ(CallFunction(manager, "RunScenario"), -1);
    EXPECT_EQ(CallFunction(manager, "RunScenario"), -1);
}

TEST_F(FunctionManagerTest, SecondLoadOfAPathWhoseFirstLoadFailedReturnsTrue) {
    FunctionManager manager({});
    const std::wstring path = ModulePath(L"no_such_module");
    EXPECT_FALSE(manager.LoadFunctionDll(path));
    EXPECT_TRUE(manager.LoadFunctionDll(path));
}

TEST_F(FunctionManagerTest, MissingModuleDoesNotKeepTheOthersOut) {
    FunctionManager manager({ModulePath(L"no_such_module"), pathA});
    EXPECT_EQ(CallFunction(manager, "RunScenario"), 0);
    EXPECT_TRUE(manager.LoadFunctionDll(ModulePath(L"no_such_module")));
}

TEST_F(FunctionManagerTest, FileThatIsNoModuleIsRefused) {
    FunctionManager manager({});
    EXPECT_FALSE(manager.LoadFunctionDll(ModulePath(L"")));
    EXPECT_FALSE(manager.LoadFunctionDll(L""));
}

TEST_F(FunctionManagerTest, ExceptionsOfACalledFunctionPassThrough) {
    const FunctionManager manager({ModulePath(L"throwing_module")});
    EXPECT_THROW(CallFunction(manager, "RunScenario"), std::runtime_error);
}

TEST_F(FunctionManagerTest, ModuleWhoseGetFunctionsThrowsServesNothing) {
    FunctionManager manager({});
    EXPECT_TRUE(manager.LoadFunctionDll(ModulePath(L"module_with_throwing_get_functions")));
    EXPECT_EQ(CallFunction(manager, "RunScenario"), -1);
}

} // namespace
