#include "kit/engine/EngineFixture.h"

namespace {

/// How the scenario of a request is found.
class EnqueueScenarioTest : public EngineFixture {
protected:
    EnqueueScenarioTest() {
        Start();
        companion.Forget();
    }

    bool EnqueueScenario(const std::wstring& id) {
        EnqueueJobsInfo request = Request({{Input(L"a.stl")}});
        request.scenario.id = id;
        request.scenario.displayName = L"requested name";
        request.scenario.inputs.resize(2);
        JobEnqueueResult result;
        const bool enqueued = engine->EnqueueJob(request, result);
        EXPECT_EQ(result.jobIds.size(), 1U);
        return enqueued;
    }

    void Catalogue(const std::wstring& id, const std::wstring& path) {
        engine->scenarioMap[id] = {id, L"relative", path, L"catalogued name", {}};
    }

    const ScenarioInfo& ScenarioOfJob() { return Job(1).GetJobListInfo().scenario; }

    std::wstring ScenarioDirOfJob() {
        class Open : public JobEntry {
        public:
            using JobEntry::scenarioDir;
        };
        return Job(1).*(&Open::scenarioDir);
    }
};

TEST_F(EnqueueScenarioTest, UnknownScenarioIsAnErrorAndChangesNothing) {
    EXPECT_FALSE(EnqueueScenario(L"nowhere.rb"));
    EXPECT_TRUE(engine->jobList.empty());
    EXPECT_EQ(companion.Events(), Lines{L"error: Scenario: nowhere.rb is not found"});
}

TEST_F(EnqueueScenarioTest, ScenarioNamedByItsPathIsSplitIntoItsPieces) {
    EXPECT_TRUE(EnqueueScenario(scenarioFile));
    EXPECT_EQ(ScenarioOfJob().id, scenarioFile);
    EXPECT_EQ(ScenarioOfJob().path, scenarioFile);
    EXPECT_EQ(ScenarioOfJob().relativePath, L"mesh.rb");
    EXPECT_EQ(ScenarioOfJob().displayName, L"mesh");
    EXPECT_EQ(ScenarioOfJob().inputs.size(), 2U);
    EXPECT_EQ(ScenarioDirOfJob(), directory.Path() + L"\\");
}

TEST_F(EnqueueScenarioTest, CataloguedScenarioIsCopiedWhole) {
    engine->scenarioDirectories = {{L"C:\\first", L""}, {L"C:\\second", L""}};
    Catalogue(L"12345", scenarioFile);
    EXPECT_TRUE(EnqueueScenario(L"12345"));
    EXPECT_EQ(ScenarioOfJob(), engine->scenarioMap.at(L"12345"));
    EXPECT_EQ(ScenarioDirOfJob(), L"C:\\first");
}

TEST_F(EnqueueScenarioTest, CatalogueComesBeforeFiles) {
    const std::wstring other = Write(L"other.rb", "");
    Catalogue(scenarioFile, other);
    EXPECT_TRUE(EnqueueScenario(scenarioFile));
    EXPECT_EQ(ScenarioOfJob().path, other);
}

TEST_F(EnqueueScenarioTest, CataloguedScenarioWhoseFileIsGoneIsNamedByItsPath) {
    Catalogue(L"12345", directory / L"gone.rb");
    EXPECT_FALSE(EnqueueScenario(L"12345"));
    EXPECT_EQ(companion.Events(), Lines{L"error: Scenario: " + directory.Path() + L"\\gone.rb is not found"});
}

TEST_F(EnqueueScenarioTest, CatalogueIdsAreComparedExactly) {
    Catalogue(L"ABC", scenarioFile);
    EXPECT_FALSE(EnqueueScenario(L"abc"));
}

TEST_F(EnqueueScenarioTest, ScenarioDirectoriesAreSearchedInOrder) {
    engine->scenarioDirectories = {{directory / L"one", L""}, {directory / L"two", L""}, {directory / L"three", L""}};
    Write(L"three\\x.rb", "");
    const std::wstring expected = Write(L"two\\x.rb", "");
    EXPECT_TRUE(EnqueueScenario(L"x.rb"));
    EXPECT_EQ(ScenarioOfJob().path, expected);
    EXPECT_EQ(ScenarioOfJob().relativePath, L"x.rb");
    EXPECT_EQ(ScenarioDirOfJob(), directory / L"two\\");
}

TEST_F(EnqueueScenarioTest, RelativeScenarioBelowADirectoryIsFound) {
    engine->scenarioDirectories = {{directory.Path(), L""}};
    const std::wstring expected = Write(L"sub\\x.rb", "");
    EXPECT_TRUE(EnqueueScenario(L"sub\\x.rb"));
    EXPECT_EQ(ScenarioOfJob().path, expected);
}

TEST_F(EnqueueScenarioTest, DirectoryIsTakenForAScenario) {
    const std::wstring scenario = directory / L"set.of\\scenarios.rb";
    Write(L"set.of\\scenarios.rb\\x.rb", "");
    EXPECT_TRUE(EnqueueScenario(scenario));
    EXPECT_EQ(ScenarioOfJob().path, scenario);
    EXPECT_EQ(ScenarioOfJob().relativePath, L"scenarios.rb");
    EXPECT_EQ(ScenarioOfJob().displayName, L"scenarios");
    EXPECT_EQ(ScenarioDirOfJob(), directory / L"set.of\\");
}

TEST_F(EnqueueScenarioTest, EmptyIdWithoutScenarioDirectoriesIsNotFound) {
    EXPECT_FALSE(EnqueueScenario(L""));
    EXPECT_TRUE(engine->jobList.empty());
    EXPECT_EQ(companion.Events(), Lines{L"error: Scenario:  is not found"});
}

TEST_F(EnqueueScenarioTest, EmptyIdNamesTheFirstScenarioDirectoryThatExists) {
    Write(L"two\\x.rb", "");
    engine->scenarioDirectories = {{directory / L"one", L""}, {directory / L"two", L""}, {directory.Path(), L""}};
    EXPECT_TRUE(EnqueueScenario(L""));
    EXPECT_EQ(ScenarioOfJob().path, directory / L"two");
    EXPECT_EQ(ScenarioOfJob().displayName, L"two");
}

TEST_F(EnqueueScenarioTest, NamesTooLongToSplitLeaveThePiecesEmpty) {
    const std::wstring deep =
        std::wstring(120, L'd') + L"\\" + std::wstring(120, L'e') + L"\\" + std::wstring(60, L'f');
    const std::wstring file = Write(deep + L"\\x.rb", "");
    EXPECT_TRUE(EnqueueScenario(file));
    EXPECT_EQ(ScenarioOfJob().path, file);
    EXPECT_EQ(ScenarioOfJob().relativePath, L"");
    EXPECT_EQ(ScenarioOfJob().displayName, L"");
    EXPECT_EQ(ScenarioDirOfJob(), L"");
}

TEST_F(EnqueueScenarioTest, EmptyOutputDirectoryIsAnErrorAndChangesNothing) {
    EnqueueJobsInfo request = Request({{Input(L"a.stl")}});
    request.outputDir.clear();
    request.useTimeStampFolder = true;
    JobEnqueueResult result;
    EXPECT_FALSE(engine->EnqueueJob(request, result));
    EXPECT_TRUE(engine->jobList.empty());
    EXPECT_EQ(result.jobIds, std::vector<JobIdInfo>(1));
    EXPECT_EQ(companion.Events(), Lines{L"error: OutputDir: Path is not set"});
}

TEST_F(EnqueueScenarioTest, MissingScenarioIsReportedBeforeTheOutputDirectory) {
    EnqueueJobsInfo request = Request({});
    request.outputDir.clear();
    request.scenario.id = L"nowhere.rb";
    JobEnqueueResult result;
    EXPECT_FALSE(engine->EnqueueJob(request, result));
    EXPECT_EQ(companion.Events(), Lines{L"error: Scenario: nowhere.rb is not found"});
}

} // namespace
