#include "services/SettingsStore.h"

#include <string>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"

namespace {

class SettingsStoreTest : public testing::Test {
protected:
    SettingsStoreTest() {
        Write(R"({"logLevel":"error"})");
        store.Use(file);
    }

    void Write(const std::string& text) const { WriteTextFile(file, text); }

    /// What the next look at the file finds.
    settings::Diagnostics Look() {
        settings::Diagnostics diagnostics;
        (void)store.Current(diagnostics);
        return diagnostics;
    }

    const TemporaryDirectory directory;
    const std::wstring file = directory / L"settings.json";
    settings::SettingsStore store;
};

TEST_F(SettingsStoreTest, TheFileIsInForce) {
    settings::Diagnostics diagnostics;
    EXPECT_EQ(store.Current(diagnostics)->logLevel, log_file::Level::Error);
    EXPECT_EQ(store.FileInUse(), file);
    EXPECT_EQ(diagnostics.error, L"");
    EXPECT_TRUE(diagnostics.warnings.empty());
}

TEST_F(SettingsStoreTest, AnotherStoreHasSettingsOfItsOwn) {
    WriteTextFile(directory / L"other.json", R"({"logLevel":"debug"})");
    settings::SettingsStore other;
    other.Use(directory / L"other.json");
    settings::Diagnostics diagnostics;
    EXPECT_EQ(other.Current(diagnostics)->logLevel, log_file::Level::Debug);
    EXPECT_EQ(store.Current(diagnostics)->logLevel, log_file::Level::Error);
}

TEST_F(SettingsStoreTest, AnInvalidFileIsFoundOnceAndChangesNothing) {
    (void)Look();
    Write("{");
    settings::Diagnostics diagnostics;
    EXPECT_EQ(store.Current(diagnostics)->logLevel, log_file::Level::Error);
    EXPECT_NE(diagnostics.error.find(L"settings.json"), std::wstring::npos);
    EXPECT_EQ(Look().error, L"");
    EXPECT_NE(store.Problem(diagnostics), L"");
}

TEST_F(SettingsStoreTest, APartWithoutEffectIsFoundOnce) {
    Write(R"({"nonsense":1})");
    EXPECT_EQ(Look().warnings.size(), 1U);
    EXPECT_EQ(Look().warnings.size(), 0U);
}

TEST_F(SettingsStoreTest, WhatIsFrozenTakesEffectWithTheNextStart) {
    settings::Diagnostics diagnostics;
    const std::wstring atStart = store.FrozenForProcess(diagnostics)->logFile;
    Write(R"({"logLevel":"warning","logFile":"other.log"})");
    const auto current = store.Current(diagnostics);
    EXPECT_EQ(current->logFile, atStart);
    EXPECT_EQ(current->logLevel, log_file::Level::Warning);
    ASSERT_EQ(diagnostics.warnings.size(), 1U);
    EXPECT_NE(diagnostics.warnings[0].find(L"logFile: a change takes effect with the next start"), std::wstring::npos);
}

} // namespace
