#include "ControllerCSWrapper/ControllerCSWrapper.h"

#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "kit/TemporaryDirectory.h"
#include "services/Settings.h"

namespace {

class LogFileTest : public testing::Test {
protected:
    LogFileTest() {
        WriteTextFile(directory / L"settings.json", R"({"logLevel":"debug"})");
        settings::UseFile(directory / L"settings.json");
        ControllerCSWrapper::ChangeLogFilePath(path);
    }
    ~LogFileTest() override {
        ControllerCSWrapper::ChangeLogFilePath(L"");
        settings::UseFile(L"");
    }

    std::vector<std::string> Records() const {
        std::vector<std::string> records;
        std::istringstream content(ReadTextFile(path));
        for (std::string record; std::getline(content, record);) {
            records.push_back(record);
        }
        return records;
    }

    const TemporaryDirectory directory;
    const std::wstring path = directory / L"controller.log";
};

} // namespace

TEST_F(LogFileTest, WritesTimeLevelThreadAndMessage) {
    ControllerCSWrapper::WriteDebugLog(L"one");
    ControllerCSWrapper::WriteInfoLog(L"two");
    ControllerCSWrapper::WriteWarnLog(L"three");
    ControllerCSWrapper::WriteErrorLog(L"four");
    const std::vector<std::string> records = Records();
    const std::vector<std::string> endings = {"debug   \\[\\d+\\] one", "info    \\[\\d+\\] two",
                                              "warning \\[\\d+\\] three", "error   \\[\\d+\\] four"};
    ASSERT_EQ(records.size(), endings.size());
    for (std::size_t index = 0; index < records.size(); ++index) {
        const std::regex form("\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z " + endings[index]);
        EXPECT_TRUE(std::regex_match(records[index], form)) << records[index];
    }
}

TEST_F(LogFileTest, WritesOneLineForOneMessage) {
    ControllerCSWrapper::WriteInfoLog(L"first\nsecond\r\nthird");
    ASSERT_EQ(Records().size(), 1u);
    EXPECT_NE(Records()[0].find("first\\nsecond\\r\\nthird"), std::string::npos);
}

TEST_F(LogFileTest, TakesPercentSignsAndBracesLiterally) {
    ControllerCSWrapper::WriteInfoLog(L"{} {0} %s %v {");
    EXPECT_NE(Records().at(0).find("{} {0} %s %v {"), std::string::npos);
}

TEST_F(LogFileTest, GoesOnInAnotherFile) {
    ControllerCSWrapper::WriteInfoLog(L"one");
    ControllerCSWrapper::ChangeLogFilePath(directory / L"other.log");
    ControllerCSWrapper::WriteInfoLog(L"two");
    EXPECT_EQ(Records().size(), 1u);
    EXPECT_NE(ReadTextFile(directory / L"other.log").find("two"), std::string::npos);
}

TEST_F(LogFileTest, KeepsTheRecordsOfManyThreadsWhole) {
    constexpr int threadCount = 8;
    constexpr int recordsEach = 200;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([thread] {
            for (int record = 0; record < recordsEach; ++record) {
                ControllerCSWrapper::WriteInfoLog(L"<" + std::to_wstring(thread * recordsEach + record) + L">");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }

    std::set<int> numbers;
    const std::regex form("\\S+Z info    \\[\\d+\\] <(\\d+)>");
    for (const std::string& record : Records()) {
        std::smatch match;
        ASSERT_TRUE(std::regex_match(record, match, form)) << record;
        numbers.insert(std::stoi(match[1]));
    }
    EXPECT_EQ(numbers.size(), static_cast<std::size_t>(threadCount * recordsEach));
}
