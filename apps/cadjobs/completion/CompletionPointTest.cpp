#include "cadjobs/completion/CompletionPoint.h"

#include <gtest/gtest.h>

namespace {

using front_end::CompletionPoint;
using front_end::PointIn;
using front_end::ValueKind;
using Place = CompletionPoint::Place;

TEST(CompletionPointTest, ALineBeginsWithASubcommand) {
    EXPECT_EQ(PointIn({}).place, Place::Subcommand);
    EXPECT_EQ(PointIn({L"li"}).typed, L"li");
    EXPECT_EQ(PointIn({L"--json", L""}).place, Place::Subcommand);
    const CompletionPoint host = PointIn({L"host", L"st"});
    EXPECT_EQ(host.place, Place::Subcommand);
    EXPECT_EQ(host.group, L"host");
    EXPECT_EQ(host.typed, L"st");
}

TEST(CompletionPointTest, AnOptionIsOneOfTheSubcommand) {
    const CompletionPoint point = PointIn({L"cancel", L"--a"});
    EXPECT_EQ(point.place, Place::Option);
    EXPECT_STREQ(point.subcommand->name, "cancel");
    EXPECT_EQ(point.typed, L"--a");
    EXPECT_EQ(PointIn({L"host", L"stop", L"--"}).place, Place::Option);
}

TEST(CompletionPointTest, AValueFollowsItsOptionOrAnEqualsSign) {
    for (const std::vector<std::wstring>& words : std::vector<std::vector<std::wstring>>{
             {L"list", L"--state", L"Fa"}, {L"list", L"-s", L"Fa"}, {L"list", L"--state", L"=", L"Fa"}}) {
        const CompletionPoint point = PointIn(words);
        EXPECT_EQ(point.place, Place::OptionValue);
        EXPECT_EQ(point.kind, ValueKind::States);
        EXPECT_EQ(point.kept, L"");
        EXPECT_EQ(point.typed, L"Fa");
    }
    const CompletionPoint attached = PointIn({L"list", L"--state=Fa"});
    EXPECT_EQ(attached.kind, ValueKind::States);
    EXPECT_EQ(attached.kept, L"--state=");
    EXPECT_EQ(attached.typed, L"Fa");
    EXPECT_EQ(PointIn({L"list", L"--state", L"="}).typed, L"");
    EXPECT_EQ(PointIn({L"list", L"="}).place, Place::Operand);
}

TEST(CompletionPointTest, AListContinuesAfterItsLastComma) {
    const CompletionPoint jobs = PointIn({L"wait", L"3,4"});
    EXPECT_EQ(jobs.kept, L"3,");
    EXPECT_EQ(jobs.typed, L"4");
    const CompletionPoint states = PointIn({L"list", L"--state=Failed,Ca"});
    EXPECT_EQ(states.kept, L"--state=Failed,");
    EXPECT_EQ(states.typed, L"Ca");
}

TEST(CompletionPointTest, AnOperandHasItsKindAndWhatComesAfterAScenarioIsAFile) {
    EXPECT_EQ(PointIn({L"run", L""}).kind, ValueKind::Scenario);
    EXPECT_EQ(PointIn({L"run", L"--output", L"x", L"a.rb", L""}).kind, ValueKind::File);
    EXPECT_EQ(PointIn({L"run", L"a.rb", L"--argument", L""}).kind, ValueKind::Parameter);
    EXPECT_EQ(PointIn({L"run", L"a.rb", L"--argument", L""}).operands, std::vector<std::wstring>{L"a.rb"});
    EXPECT_EQ(PointIn({L"add", L""}).kind, ValueKind::File);
    EXPECT_EQ(PointIn({L"log", L"3", L""}).kind, ValueKind::Flag);
}

TEST(CompletionPointTest, NothingIsAnOptionBehindTwoDashes) {
    const CompletionPoint point = PointIn({L"run", L"a.rb", L"--", L"-"});
    EXPECT_EQ(point.place, Place::Operand);
    EXPECT_EQ(point.kind, ValueKind::File);
}

TEST(CompletionPointTest, AnUnknownSubcommandHasNothing) {
    const CompletionPoint point = PointIn({L"lsit", L""});
    EXPECT_EQ(point.subcommand, nullptr);
    EXPECT_EQ(PointIn({L"host", L"lost", L"--"}).place, Place::Option);
}

} // namespace
