#include "cadjobs/Cadjobs.h"

#include "formats/ScenarioManifest.h"
#include "kit/front_end/CommandContextFixture.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace {

class NewScenarioTest : public CommandContextFixture {
protected:
    int New(std::vector<std::wstring> arguments) {
        arguments.insert(arguments.begin(), L"new");
        arguments.insert(arguments.end(), {L"--output", directory / L"made"});
        return static_cast<int>(front_end::RunCadjobs(context, arguments));
    }
};

TEST_F(NewScenarioTest, EachLanguageHasATemplateWithTheNameInPlace) {
    for (const wchar_t* const language : {L"ruby", L"python", L"native"}) {
        EXPECT_EQ(New({std::wstring(L"wall_") + language, L"--language", language}), 0) << console.errors;
        const std::wstring made = directory / (std::wstring(L"made\\wall_") + language);
        EXPECT_NE(console.output.find(text::ToUtf8(platform::ToNativeText(made))), std::string::npos);
        const std::string readme = ReadTextFile(made + L"\\README.md");
        EXPECT_EQ(readme.find("# wall_"), 0U);
        EXPECT_EQ(readme.find("@NAME@"), std::string::npos);
        EXPECT_TRUE(platform::Exists(made + L"\\tests\\input.txt"));
    }
}

TEST_F(NewScenarioTest, WhatIsMadeCanBePacked) {
    EXPECT_EQ(New({L"wall"}), 0);
    EXPECT_EQ(static_cast<int>(front_end::RunCadjobs(
                  context, {L"pack", directory / L"made\\wall", L"--output", directory / L"packages"})),
              0)
        << console.errors;
    scenario_manifest::ScenarioManifest manifest;
    std::wstring problem;
    EXPECT_TRUE(scenario_manifest::ReadFor(directory / L"packages\\wall.esa", manifest, problem));
    EXPECT_EQ(manifest.displayName, L"wall");
}

TEST_F(NewScenarioTest, NothingThatExistsIsTouched) {
    WriteTextFile(directory / L"made\\wall\\main.rb", "mine");
    EXPECT_EQ(New({L"wall"}), 2);
    EXPECT_EQ(ReadTextFile(directory / L"made\\wall\\main.rb"), "mine");
    EXPECT_FALSE(platform::Exists(directory / L"made\\wall\\README.md"));
}

TEST_F(NewScenarioTest, NamesAndLanguagesThatCannotBeAreRefused) {
    for (const wchar_t* const name : {L"", L"..", L"a/b", L"a b", L"-a", L"\xe4", L"a.b"}) {
        EXPECT_EQ(New({L"--", name}), 2);
    }
    EXPECT_EQ(New({L"wall", L"--language", L"perl"}), 2);
    EXPECT_NE(console.errors.find("perl is no language of a scenario that can be made"), std::string::npos);
    EXPECT_FALSE(platform::Exists(directory / L"made"));
}

TEST_F(NewScenarioTest, WithoutTheTemplatesTheMessageSaysWhereTheyAreMissed) {
    UseSettings(R"({"version":1,"logFile":"","scenarioApiDirectory":"nowhere"})");
    EXPECT_EQ(New({L"wall"}), 2);
    EXPECT_NE(console.errors.find("\"scenarioApiDirectory\""), std::string::npos) << console.errors;
    EXPECT_FALSE(platform::Exists(directory / L"made\\wall"));
}

} // namespace
