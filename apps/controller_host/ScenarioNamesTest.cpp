#include "kit/controller_host/AnswersFixture.h"

#include "kit/ZipWriter.h"
#include "platform/files/FileSystem.h"
#include "platform/files/NativePath.h"

namespace {

using Texts = std::vector<std::wstring>;

/// The names by which a request may select a scenario, and the names that its jobs show.
class ScenarioNamesTest : public AnswersFixture {
protected:
    /// The scenario record of a job that was requested with this name.
    ScenarioInfo ScenarioOfJob(const std::wstring& name) {
        const JobEnqueueResult result = Enqueued(RequestFor(name, {directory / L"part.stl"}));
        EXPECT_FALSE(result.jobIds.at(0).id.empty()) << "refused";
        const std::vector<JobListInfo> jobs = Jobs();
        return jobs.empty() ? ScenarioInfo() : jobs.back().scenario;
    }

    Texts ReasonsFor(const std::wstring& name) {
        return Enqueued(RequestFor(name, {directory / L"part.stl"})).inputSetResults.at(0);
    }

    void WritePackage(const std::wstring& name, const std::string& displayName) const {
        test_support::ZipEntry manifest;
        manifest.name = "manifest.json";
        manifest.content =
            R"({"version":1,"displayName":")" + displayName + R"(","entryPoint":"m.rb","interpreter":"ruby"})";
        test_support::ZipEntry entryPoint;
        entryPoint.name = "m.rb";
        WriteTextFile(directory / name, test_support::MakeZip({manifest, entryPoint}));
    }

    std::wstring IdOf(const std::wstring& displayName) {
        Ask(L"FetchScenariosRequest");
        for (const ScenarioInfo& scenario : Answered<std::vector<ScenarioInfo>>(L"FetchScenariosResponse")) {
            if (scenario.displayName == displayName) {
                return scenario.id;
            }
        }
        return {};
    }
};

TEST_F(ScenarioNamesTest, AFileInASubdirectoryIsFoundByItsName) {
    WriteTextFile(directory / L"scenarios\\deep\\down\\inner.rb", "puts 1");
    EXPECT_EQ(ScenarioOfJob(L"inner.rb").path, directory / L"scenarios\\deep\\down\\inner.rb");
}

TEST_F(ScenarioNamesTest, ARelativePathMayBeWrittenAsTheSystemDoes) {
    WriteTextFile(directory / L"scenarios\\deep\\inner.rb", "puts 1");
    EXPECT_EQ(ScenarioOfJob(L"deep/inner.rb").path, directory / L"scenarios\\deep\\inner.rb");
    EXPECT_EQ(ScenarioOfJob(L"deep\\inner.rb").path, directory / L"scenarios\\deep\\inner.rb");
}

TEST_F(ScenarioNamesTest, AFileAtTheTopComesBeforeOneOfTheSameNameBelow) {
    WriteTextFile(directory / L"scenarios\\a\\mesh.rb", "puts 2");
    EXPECT_EQ(ScenarioOfJob(L"mesh.rb").path, directory / L"scenarios\\mesh.rb");
}

TEST_F(ScenarioNamesTest, ANameThatSeveralSubdirectoriesHaveIsRefused) {
    WriteTextFile(directory / L"scenarios\\a\\twin.rb", "puts 1");
    WriteTextFile(directory / L"scenarios\\b\\twin.rb", "puts 1");
    EXPECT_EQ(ReasonsFor(L"twin.rb"),
              Texts{L"Several scenarios have the name twin.rb: " +
                    platform::ToNativeText(directory / L"scenarios\\a\\twin.rb") + L", " +
                    platform::ToNativeText(directory / L"scenarios\\b\\twin.rb") + L". Name one by its path or id."});
}

TEST_F(ScenarioNamesTest, AnIdIsKnownToAHostThatNobodyAskedForTheScenarios) {
    const std::wstring id = IdOf(L"mesh");
    engine = std::make_unique<HostEngine>(functions.get());
    answers = std::make_unique<RequestHandler>(*engine, transmitter);
    EXPECT_EQ(ScenarioOfJob(id).displayName, L"mesh");
}

TEST_F(ScenarioNamesTest, AFileOfAnotherLanguageIsFoundThoughItIsNotListed) {
    WriteTextFile(directory / L"scenarios\\other.py", "print(1)");
    EXPECT_EQ(ScenarioOfJob(L"other.py").path, directory / L"scenarios\\other.py");
    EXPECT_EQ(IdOf(L"other"), L"");
}

TEST_F(ScenarioNamesTest, APackageIsShownByItsOwnNameHoweverItIsNamed) {
    WritePackage(L"scenarios\\sub\\check.esa", "Hollow check");
    for (const std::wstring& name : {IdOf(L"Hollow check"), std::wstring(L"check.esa"), std::wstring(L"sub/check.esa"),
                                     directory / L"scenarios\\sub\\check.esa"}) {
        EXPECT_EQ(ScenarioOfJob(name).displayName, L"Hollow check") << name.size();
    }
}

TEST_F(ScenarioNamesTest, APackageOutsideTheDirectoriesIsShownByItsOwnNameAsItStandsThere) {
    WritePackage(L"elsewhere.esa", "First name");
    EXPECT_EQ(ScenarioOfJob(directory / L"elsewhere.esa").displayName, L"First name");
    WritePackage(L"elsewhere.esa", "Second name");
    EXPECT_EQ(ScenarioOfJob(directory / L"elsewhere.esa").displayName, L"Second name");
    EXPECT_EQ(ScenarioOfJob(directory / L"elsewhere.esa").path, directory / L"elsewhere.esa");
    WriteTextFile(directory / L"elsewhere.esa", "no package");
    EXPECT_EQ(ScenarioOfJob(directory / L"elsewhere.esa").displayName, L"elsewhere");
}

TEST_F(ScenarioNamesTest, TheLabelOfTheDirectoryStandsBeforeTheNameHoweverItIsNamed) {
    WritePackage(L"scenarios\\check.esa", "Hollow check");
    WriteTextFile(directory / L"settings.json",
                  R"({"version":1,"workDirectory":"work","jobListFile":"job_list.json",)"
                  R"("logFile":"","scenarioDirectories":[{"path":"scenarios","label":"L"}]})");
    EXPECT_EQ(ScenarioOfJob(IdOf(L"L : mesh")).displayName, L"L : mesh");
    EXPECT_EQ(ScenarioOfJob(L"mesh.rb").displayName, L"L : mesh");
    EXPECT_EQ(ScenarioOfJob(directory / L"scenarios\\check.esa").displayName, L"L : Hollow check");
}

TEST_F(ScenarioNamesTest, AScenarioThatIsGoneIsCalledSo) {
    WriteTextFile(directory / L"scenarios\\brief.rb", "puts 1");
    const std::wstring id = IdOf(L"brief");
    ASSERT_TRUE(platform::RemoveFile(directory / L"scenarios\\brief.rb"));
    EXPECT_EQ(ReasonsFor(id), Texts{L"The scenario file " + platform::ToNativeText(directory / L"scenarios\\brief.rb") +
                                    L" does not exist."});
}

TEST_F(ScenarioNamesTest, ARelativeNameIsNotSoughtInTheHostsCurrentDirectory) {
    WriteTextFile(L"only_here.rb", "puts 1");
    EXPECT_EQ(ReasonsFor(L"only_here.rb").size(), 1U);
    ASSERT_TRUE(platform::RemoveFile(L"only_here.rb"));
}

} // namespace
