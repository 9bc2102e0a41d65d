#include "formats/Scheduling.h"

#include <gtest/gtest.h>

namespace {

ListedJob FailedJob() {
    ListedJob job;
    job.id = L"0a";
    job.seqId = 7;
    job.status = JobStatus::Failed;
    job.outputDir = L"\\out\\part (2)";
    job.workDir = L"\\work\\0a";
    job.startTime = L"2026-03-05T07:08:09Z";
    job.scenario.id = L"mesh_report.rb";
    job.scenario.displayName = L"Mesh report";
    job.inputFiles = {L"\\in\\part.stl", L"\\in\\frame.stl"};
    job.runArgument = L"fine";
    job.extraText = L"order 12";
    job.hasOwnOutputDir = true;
    return job;
}

TEST(SchedulingTest, AJobIsRepeatedWithWhatItWasMadeOf) {
    const ScheduledRequest request = RequestToRepeat(FailedJob());
    ScheduledRequest expected;
    expected.inputFileSets = {{L"\\in\\part.stl", L"\\in\\frame.stl"}};
    expected.scenario.id = L"mesh_report.rb";
    expected.outputDir = L"\\out";
    expected.runArgument = L"fine";
    expected.extraText = L"order 12";
    expected.reuse = false;
    EXPECT_EQ(request, expected);
}

TEST(SchedulingTest, AJobWithoutADirectoryOfItsOwnIsRepeatedInTheSameOne) {
    ListedJob job = FailedJob();
    job.hasOwnOutputDir = false;
    EXPECT_EQ(RequestToRepeat(job).outputDir, L"\\out\\part (2)");
}

TEST(SchedulingTest, OnlyRulesWithoutAValueGetTheDefault) {
    const RunRules defaults{1, 2, true, false, 5, 6, 7, 8};
    RunRules rules;
    rules.retries = 0;
    rules.retryBackoff = false;
    rules.timeLimit = 0;
    rules.cpuLimitPercent = 50;
    AddDefaults(defaults, rules);
    EXPECT_EQ(rules, (RunRules{0, 2, false, false, 0, 6, 7, 50}));
    RunRules none;
    AddDefaults(defaults, none);
    EXPECT_EQ(none, defaults);
    AddDefaults({}, none);
    EXPECT_EQ(none, defaults);
}

TEST(SchedulingTest, ARepeatedJobKeepsItsPriorityNeedsAndLimitsAndWaitsForNothingElse) {
    ListedJob job = FailedJob();
    job.priority = 5;
    job.needs = {{L"cad", 1}};
    job.retries = 2;
    job.timeLimit = 60;
    job.reuse = true;
    job.hold = true;
    job.notBefore = 1772694600;
    job.after = {L"0b"};
    job.afterEnd = {L"0c"};
    Scheduling expected;
    expected.priority = 5;
    expected.needs = {{L"cad", 1}};
    expected.retries = 2;
    expected.timeLimit = 60;
    expected.reuse = false;
    EXPECT_EQ(static_cast<const Scheduling&>(RequestToRepeat(job)), expected);
}

} // namespace
