#include <algorithm>
#include <string>
#include <vector>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "kit/OtherProcesses.h"
#include "kit/processes/HostProcessFixture.h"
#include "kit/web/RawClient.h"
#include "kit/web/SignedInBrowser.h"

#include <gtest/gtest.h>

using test_support::SignedInBrowser;

namespace {

constexpr int rows = 100'000;
constexpr int rowsOfPart = 10'000;

/// How often each job from 1 on stands in rows with its number only.
std::vector<int> TimesListed(const std::string& text) {
    static const std::string member = "{\"number\":";
    std::vector<int> times(rows);
    for (std::size_t place = text.find(member); place != std::string::npos; place = text.find(member, place + 1)) {
        ++times.at(std::stoul(text.substr(place + member.size(), 10)) - 1);
    }
    return times;
}

/// The web page's server and a host with a long list.
class LongWebListTest : public HostProcessFixture {
protected:
    LongWebListTest() {
        std::vector<JobListInfo> jobs(rows);
        for (int number = 1; number <= rows; ++number) {
            JobListInfo& job = jobs[static_cast<std::size_t>(number - 1)];
            job.id = std::to_wstring(number);
            job.seqId = number;
            job.status = JobStatus::Success;
            job.inputFiles = {L"/parts/part_" + std::to_wstring(number) + L".stl"};
        }
        EXPECT_TRUE(ControllerCSWrapper::CreateJsonFile(ControllerCSWrapper::Serialize(L"JobList", jobs),
                                                        directory / L"job_list.json"));
        StartHost();
        platform::ProcessStart web = Host({L"--background", L"--no-browser"});
        web.program = test_support::ProgramPath(L"controller_web");
        link = test_support::RunToEnd(web).output;
        EXPECT_NE(link.find("/login?token="), std::string::npos) << link;
    }

    ~LongWebListTest() override {
        platform::ProcessStart stop = Host({L"--stop"});
        stop.program = test_support::ProgramPath(L"controller_web");
        (void)test_support::RunToEnd(stop);
    }

    const test_support::Deadline deadline{"a long list on the web page"};
    std::string link;
};

TEST_F(LongWebListTest, EachJobIsListedOnceAndAChangeIsAnEvent) {
    const SignedInBrowser browser(link);
    const std::string first = browser.Get("/api/v1/jobs?limit=100").body;
    EXPECT_NE(first.find("\"total\":100000,"), std::string::npos) << first.substr(0, 200);
    std::string all;
    for (int offset = 0; offset < rows; offset += rowsOfPart) {
        all += browser.Get("/api/v1/jobs?fields=number&limit=10000&offset=" + std::to_string(offset)).body;
    }
    const std::vector<int> times = TimesListed(all);
    EXPECT_EQ(std::count(times.begin(), times.end(), 1), rows);
    test_support::RawClient events(browser.Port());
    EXPECT_TRUE(events.Send(browser.Request("GET", "/api/v1/events")));
    EXPECT_NE(events.ReceiveUntil("event: reset"), "");
    EXPECT_EQ(browser.Change("POST", "/api/v1/jobs/delete", R"({"ids":["100000"]})").status, 200U);
    EXPECT_NE(events.ReceiveUntil(R"("removed":["100000"])").find("event: jobs"), std::string::npos);
    EXPECT_NE(browser.Get("/api/v1/jobs?limit=0").body.find("\"total\":99999,"), std::string::npos);
}

} // namespace
