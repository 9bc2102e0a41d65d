#include <gmock/gmock.h>

#include "formats/Provenance.h"
#include "kit/TemporaryDirectory.h"
#include "kit/processes/ScenarioRunFixture.h"
#include "text/Text.h"

using UnlimitedRunTest = ScenarioRunFixture;

/// The runner of a test was not started by a host that was given a control group.
TEST_F(UnlimitedRunTest, TheLogOfAJobSaysWhyItsLimitsAreNotEnforced) {
    provenance::RunContext context;
    context.memoryLimitMiB = 100;
    WriteTextFile(InWorkDir(provenance::contextFileName), text::ToUtf8(provenance::Serialize(context)));
    Run("print hello\nwrite result success");
    EXPECT_TRUE(Result().succeeded);
    EXPECT_THAT(Log(), testing::MatchesRegex("\\[The limits of memory and processor time are not enforced on this "
                                             "machine: the host has no control group .*\\]\nhello\n"));
}
