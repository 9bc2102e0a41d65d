#include "front_end/output/PortableJson.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Events.h"
#include "formats/Messages.h"
#include "kit/HostileStrings.h"

namespace {

std::wstring Portable(std::wstring json) {
    front_end::MakePortable(json);
    return json;
}

/// The document that texts are written as.
std::wstring Written(const std::vector<std::wstring>& texts) {
    return json::Write(texts);
}

const std::wstring half(1, wchar_t{0xdc80});

TEST(PortableJsonTest, ATextWithALoneSurrogateIsItsCharactersAsNumbers) {
    EXPECT_EQ(Portable(Written({L"a", L"a" + half, L"\"\\\n" + half, half + L"\U0001F600"})),
              LR"(["a",{"codePoints":[97,56448]},{"codePoints":[34,92,10,56448]},{"codePoints":[56448,128512]}])");
}

TEST(PortableJsonTest, OtherTextsStayAsTheyAre) {
    for (const std::wstring& text : {std::wstring(L"plain"), std::wstring(L"C:\\udata\\\\ud800"), std::wstring(L"\"\\"),
                                     std::wstring(L"\x01\x7f\n\\"), std::wstring(L"\U0001F600")}) {
        const std::wstring json = Written({text, L"\\", L""});
        EXPECT_EQ(Portable(json), json);
        EXPECT_EQ(Portable(Written({half, text})), LR"([{"codePoints":[56448]},)" + Written({text}).substr(1));
    }
}

/// The ids of reports that have gone through JSON for others.
std::vector<std::wstring> ReadBack(const std::vector<std::wstring>& ids) {
    std::vector<JobStatusInfo> reports(ids.size());
    std::transform(ids.begin(), ids.end(), reports.begin(), [](const std::wstring& id) {
        JobStatusInfo report;
        report.id = id;
        return report;
    });
    std::vector<JobStatusInfo> received;
    const std::wstring message = messages::Serialize(events::cancelJobsFinish.name, reports);
    EXPECT_TRUE(ControllerCSWrapper::Deserialize(Portable(message), received));
    std::vector<std::wstring> read;
    std::transform(received.begin(), received.end(), std::back_inserter(read),
                   [](const JobStatusInfo& report) { return report.id; });
    return read;
}

TEST(PortableJsonTest, EveryTextIsReadBackAsItWas) {
    EXPECT_EQ(ReadBack(HostileStrings()), HostileStrings());
    RandomTexts random(7);
    for (int round = 0; round < 200; ++round) {
        const std::vector<std::wstring> texts = random.List();
        EXPECT_EQ(ReadBack(texts), texts) << "round " << round;
    }
}

TEST(PortableJsonTest, InANameALoneSurrogateIsReplaced) {
    EXPECT_EQ(Portable(json::Write(std::map<std::wstring, std::wstring>{{L"a" + half, L"b"}})), L"{\"a\xfffd\":\"b\"}");
}

TEST(PortableJsonTest, WhatIsBeforeTheBeginningStays) {
    std::wstring json = Written({half}) + L",";
    const std::wstring before = json;
    json += Written({half});
    front_end::MakePortable(json, before.size());
    EXPECT_EQ(json, before + LR"([{"codePoints":[56448]}])");
}

} // namespace
