#include <regex>
#include <set>

#include <gtest/gtest.h>

#include "ControllerCSWrapper/ControllerCSWrapper.h"

TEST(NamesTest, AFileNameLosesItsLastExtension) {
    const std::pair<const wchar_t*, const wchar_t*> table[] = {
        {L"C:\\m\\part.prt.3", L"part.prt"},
        {L"/m/part.prt", L"part"},
        {L"part", L"part"},
        {L"C:\\a.b\\part", L"part"},
        {L"a/b\\c d.stl", L"c d"},
        {L"C:\\m\\", L""},
        {L"", L""},
        {L"part.", L"part"},
        {L"\u65e5\u672c.stl", L"\u65e5\u672c"},
        {L"/m/.stl", L""},
        {L"a..b", L"a."},
    };
    for (const auto& [path, name] : table) {
        EXPECT_EQ(ControllerCSWrapper::GetFileNameWithoutExtension(path), name) << path;
    }
}

TEST(NamesTest, AGuidIsRandomHexadecimalText) {
    const std::wregex form(L"[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    std::set<std::wstring> guids;
    for (int i = 0; i < 1000; ++i) {
        const std::wstring guid = ControllerCSWrapper::CreateGuid();
        EXPECT_TRUE(std::regex_match(guid, form)) << guid;
        guids.insert(guid);
    }
    EXPECT_EQ(guids.size(), 1000U);
}
