#include "transport/in_process/TransmitterId.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using in_process::ParseTransmitterId;
using in_process::TransmitterId;

TEST(TransmitterIdTest, ReadsTheEndAndTheLine) {
    const std::vector<std::pair<std::wstring, TransmitterId>> accepted = {
        {L"engine:jobs", {true, L"jobs", L""}},
        {L"client:jobs", {false, L"jobs", L""}},
        {L"jobs", {false, L"jobs", L""}},
        {L"client:jobs#2", {false, L"jobs", L"2"}},
        {L"jobs#second one", {false, L"jobs", L"second one"}},
        {L"client:jobs#", {false, L"jobs", L""}},
        {L"engine:a:b", {true, L"a:b", L""}},
        {L"engine", {false, L"engine", L""}},
        {L"engine: ", {true, L" ", L""}},
    };
    for (const auto& [text, id] : accepted) {
        EXPECT_TRUE(ParseTransmitterId(text) == id) << testing::PrintToString(text);
    }
}

TEST(TransmitterIdTest, RefusesWhatNamesNoLine) {
    for (const std::wstring text : {L"", L":", L":jobs", L"engine:", L"client:", L"client:#2", L"#2", L"Engine:jobs",
                                    L"host:jobs", L"engine:jobs#2"}) {
        EXPECT_EQ(ParseTransmitterId(text), std::nullopt) << testing::PrintToString(text);
    }
}

} // namespace
