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
    settings::Findings Look() {
        settings::Findings findings;
        (void)store.Current(findings);
        return findings;
    }

    const TemporaryDirectory directory;
    const std::wstring file = directory / L"settings.json";
    settings::SettingsStore store;
};

TEST_F(SettingsStoreTest, TheFileIsInForce) {
    settings::Findings findings;
    EXPECT_EQ(store.Current(findings)->logLevel, log_file::Level::Error);
    EXPECT_EQ(store.FileInUse(), file);
    EXPECT_EQ(findings.error, L"");
    EXPECT_TRUE(findings.warnings.empty());
}

TEST_F(SettingsStoreTest, AnotherStoreHasSettingsOfItsOwn) {
    WriteTextFile(directory / L"other.json", R"({"logLevel":"debug"})");
    settings::SettingsStore other;
    other.Use(directory / L"other.json");
    settings::Findings findings;
    EXPECT_EQ(other.Current(findings)->logLevel, log_file::Level::Debug);
    EXPECT_EQ(store.Current(findings)->logLevel, log_file::Level::Error);
}

TEST_F(SettingsStoreTest, AnInvalidFileIsFoundOnceAndChangesNothing) {
    (void)Look();
    Write("{");
    settings::Findings findings;
    EXPECT_EQ(store.Current(findings)->logLevel, log_file::Level::Error);
    EXPECT_NE(findings.error.find(L"settings.json"), std::wstring::npos);
    EXPECT_EQ(Look().error, L"");
    EXPECT_NE(store.Problem(findings), L"");
}

TEST_F(SettingsStoreTest, APartWithoutEffectIsFoundOnce) {
    Write(R"({"nonsense":1})");
    EXPECT_EQ(Look().warnings.size(), 1U);
    EXPECT_EQ(Look().warnings.size(), 0U);
}

TEST_F(SettingsStoreTest, WhatIsFrozenTakesEffectWithTheNextStart) {
    settings::Findings findings;
    const std::wstring atStart = store.FrozenForProcess(findings)->logFile;
    Write(R"({"logLevel":"warning","logFile":"other.log"})");
    const auto current = store.Current(findings);
    EXPECT_EQ(current->logFile, atStart);
    EXPECT_EQ(current->logLevel, log_file::Level::Warning);
    ASSERT_EQ(findings.warnings.size(), 1U);
    EXPECT_NE(findings.warnings[0].find(L"logFile: a change takes effect with the next start"), std::wstring::npos);
}

} // namespace
