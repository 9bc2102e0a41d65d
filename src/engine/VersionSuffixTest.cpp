#include "engine/VersionSuffix.h"

#include <gtest/gtest.h>

namespace {

TEST(VersionSuffixTest, ExtensionThenNumberIsAVersionSuffix) {
    for (const wchar_t* path : {L"C:\\m\\part.prt.3", L"part.prt.12345678901234567890", L"..0", L"a..1", L".prt.3",
                                L"C:\\m.v\\part.3", L"part.1.2.3"}) {
        EXPECT_TRUE(HasVersionSuffix(path)) << path;
    }
}

TEST(VersionSuffixTest, AnythingElseIsNone) {
    for (const wchar_t* path :
         {L"", L"3", L".3", L"part.3", L"part.prt", L"part.prt.", L"part.prt.3a", L"part.prt.a3", L"part.prt.-3",
          L"part.prt.3 ", L"part.prt3", L"part.prt.\u0663", L"pa\nrt.prt.3", L"pa\rrt.prt.3", L"part.prt.3\n"}) {
        EXPECT_FALSE(HasVersionSuffix(path)) << path;
    }
}

TEST(VersionSuffixTest, LongPathsNeedNoStack) {
    const std::wstring longest(1'000'000, L'a');
    EXPECT_TRUE(HasVersionSuffix(longest + L".prt.3"));
    EXPECT_FALSE(HasVersionSuffix(longest));
}

} // namespace
