#include "formats/SlurmOptions.h"

#include <gtest/gtest.h>

#include "formats/ManifestFile.h"

namespace {

using slurm::SlurmOptions;

std::wstring ManifestProblem(const std::string& json) {
    scenario_manifest::ScenarioManifest manifest;
    std::wstring problem;
    std::vector<std::wstring> warnings;
    (void)scenario_manifest::ParseScriptManifest(json, manifest, problem, warnings);
    return problem;
}

TEST(SlurmOptionsTest, AManifestGivesWhatItsScenarioNeeds) {
    scenario_manifest::ScenarioManifest manifest;
    std::wstring problem;
    std::vector<std::wstring> warnings;
    ASSERT_TRUE(scenario_manifest::ParseScriptManifest(
        R"({"slurm":{"partition":"fast,main","account":"cad","cpus":4,"memoryMegabytes":2000,"minutes":30,)"
        R"("options":["--qos=low","--exclusive"]}})",
        manifest, problem, warnings))
        << problem.size();
    EXPECT_EQ(manifest.slurm, (SlurmOptions{L"fast,main", L"cad", 4, 2000, 30, {L"--qos=low", L"--exclusive"}}));
    EXPECT_TRUE(warnings.empty());
}

TEST(SlurmOptionsTest, AWrongValueIsRefusedWithItsMember) {
    EXPECT_NE(ManifestProblem(R"({"slurm":{"cpus":0}})").find(L"slurm.cpus: expected a whole number of CPUs"),
              std::wstring::npos);
    EXPECT_NE(ManifestProblem(R"({"slurm":{"partition":"a;b"}})").find(L"slurm.partition: expected"),
              std::wstring::npos);
}

TEST(SlurmOptionsTest, AnOptionThatStartsProgramsOrHidesTheJobIsRefused) {
    for (const wchar_t* const option : {L"--prolog=/bin/evil", L"--task-epilog=x", L"--job-name=x", L"--chdir=/", L"-p",
                                        L"--pa", L"--", L"qos=low", L"--qos=two words", L"--mem=3", L""}) {
        EXPECT_FALSE(slurm::SrunOption::Accepts(option)) << std::wstring(option).size();
    }
    EXPECT_FALSE(slurm::SrunOption::Accepts(L"--comment=" + std::wstring(300, L'x')));
    for (const wchar_t* const option : {L"--gres=gpu:2", L"--begin=now", L"--wckey=a", L"--exclusive"}) {
        EXPECT_TRUE(slurm::SrunOption::Accepts(option)) << std::wstring(option).size();
    }
    for (const wchar_t* const option : {L"--one", L"--of=1", L"--tmp,=1", L"--NAME", L"--=1", L"--"}) {
        EXPECT_FALSE(slurm::SrunOption::Accepts(option)) << std::wstring(option).size();
    }
}

TEST(SlurmOptionsTest, ARefusedOptionIsAnsweredWithAllThatAreAccepted) {
    EXPECT_NE(ManifestProblem(R"({"slurm":{"options":["--pty"]}})")
                  .find(L"slurm.options[0]: expected --NAME or --NAME=VALUE, where NAME is one of: begin, "
                        L"cluster-constraint, comment, constraint, contiguous, cores-per-socket, deadline, exclude, "
                        L"exclusive, gpus, gpus-per-node, gpus-per-task, gres, hint, licenses, mem-per-cpu, "
                        L"mem-per-gpu, nice, nodelist, oversubscribe, prefer, priority, qos, reservation, switches, "
                        L"threads-per-core, tmp, wckey, found "),
              std::wstring::npos);
    for (const std::wstring_view name : slurm::srunOptions) {
        EXPECT_TRUE(slurm::SrunOption::Accepts(L"--" + std::wstring(name)));
    }
}

TEST(SlurmOptionsTest, ContradictionsAreNamed) {
    EXPECT_EQ(slurm::FindContradiction({L"", L"", 0, 100, 0, {L"--qos=a", L"--mem-per-cpu=5"}}, 0),
              L"slurm.options[1]: expected no other amount of memory beside \"memoryMegabytes\", found "
              L"\"--mem-per-cpu\"");
    EXPECT_EQ(slurm::FindContradiction({L"", L"", 0, 0, 0, {L"--qos=a", L"--qos=b"}}, 0),
              L"slurm.options[1]: expected each option once, found \"--qos\" again");
    EXPECT_EQ(slurm::FindContradiction({L"", L"", 0, 0, 2, {}}, 120),
              L"slurm.minutes: expected more than \"timeLimitSeconds\", which is 120 s, found 2");
    EXPECT_EQ(slurm::FindContradiction({L"", L"", 0, 0, 2, {}}, 119), L"");
    EXPECT_NE(slurm::FindContradiction({L"", L"", 0, 0, 0, std::vector<std::wstring>(33, L"--nice")}, 0), L"");
}

TEST(SlurmOptionsTest, TheMembersOfAScenarioTakeThePlaceOfTheSettings) {
    const SlurmOptions general{L"main", L"cad", 1, 0, 60, {L"--qos=low"}};
    EXPECT_EQ(slurm::Merged(general, {}), general);
    EXPECT_EQ(slurm::Merged(general, {L"big", L"", 8, 4000, 0, {L"--exclusive"}}),
              (SlurmOptions{L"big", L"cad", 8, 4000, 60, {L"--exclusive"}}));
}

} // namespace
