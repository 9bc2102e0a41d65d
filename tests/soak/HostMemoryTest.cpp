#include "HostFigures.h"
#include "HostProcessFixture.h"

#include "companion/ControllerCSWrapper.h"
#include "platform/Waiting.h"
#include "support/Deadline.h"

#include <algorithm>
#include <chrono>

namespace {

/// A host lives for months: what one large request took must not stay with it.
class HostMemoryTest : public HostProcessFixture {
protected:
    static constexpr int rows = 5000;

    void SaveLongList() const {
        std::vector<JobListInfo> jobs(rows);
        for (int number = 1; number <= rows; ++number) {
            JobListInfo& job = jobs[static_cast<std::size_t>(number - 1)];
            job.id = std::to_wstring(number);
            job.seqId = number;
            job.status = JobStatus::Success;
            job.extraText = std::wstring(200, L'x');
        }
        ASSERT_TRUE(ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", jobs),
                                                        folder / L"job_list.json"));
    }

    std::int64_t PrivateBytes() const { return FiguresOf(host.Get()).privateBytes; }

    /// The least within a moment: an answer is freed a little after its front end has it.
    std::int64_t LowestPrivateBytes() const {
        constexpr int looks = 25;
        constexpr std::chrono::milliseconds interval{20};
        std::int64_t lowest = PrivateBytes();
        for (int look = 0; look < looks; ++look) {
            platform::WaitForAny({}, interval);
            lowest = std::min(lowest, PrivateBytes());
        }
        return lowest;
    }
};

TEST_F(HostMemoryTest, WhatLargeAnswersTookIsGivenBack) {
    SaveLongList();
    StartHost();
    FrontEnd frontEnd(meetingPlace);
    frontEnd.Delete({L"1"});
    const std::int64_t before = LowestPrivateBytes();
    for (int number = 2; number < 8; ++number) {
        frontEnd.Jobs();
        frontEnd.Delete({std::to_wstring(number)});
    }
    constexpr std::int64_t noise = 4 << 20;
    EXPECT_LT(LowestPrivateBytes() - before, noise);
}

} // namespace
