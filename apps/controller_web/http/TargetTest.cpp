#include "controller_web/http/Target.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using web::ReadTarget;

namespace {

using Path = std::vector<std::string>;

Path PathOf(std::string_view target) {
    const auto read = ReadTarget(target);
    return read ? read->path : Path{"refused"};
}

TEST(TargetTest, ThePathIsSplitBeforeItIsDecoded) {
    EXPECT_EQ(PathOf("/api/v1/jobs/a%2Fb"), (Path{"api", "v1", "jobs", "a/b"}));
}

TEST(TargetTest, TheRootHasNoParts) {
    EXPECT_EQ(PathOf("/"), Path{});
    EXPECT_EQ(PathOf("/?a=b"), Path{});
}

TEST(TargetTest, EmptyPartsAndDotsAreKept) {
    EXPECT_EQ(PathOf("/a//../b/"), (Path{"a", "", "..", "b", ""}));
    EXPECT_EQ(PathOf("//"), (Path{"", ""}));
}

TEST(TargetTest, APathMayHaveBytesThatAreNoText) {
    EXPECT_EQ(PathOf("/%ff%C3%a4"), Path{"\xff\xc3\xa4"});
}

TEST(TargetTest, APlusIsABlankInTheQueryOnly) {
    const auto target = ReadTarget("/a+b?text=c+d%2B");
    ASSERT_TRUE(target);
    EXPECT_EQ(target->path, Path{"a+b"});
    EXPECT_EQ(target->query.find("text")->second, "c d+");
}

TEST(TargetTest, ParametersMayBeRepeatedEmptyAndWithoutValue) {
    const auto target = ReadTarget("/?status=a&status=b&&none&empty=&=lost&sum=1=2");
    ASSERT_TRUE(target);
    const std::multimap<std::string, std::string> expected = {
        {"status", "a"}, {"status", "b"}, {"none", ""}, {"empty", ""}, {"sum", "1=2"}};
    EXPECT_EQ(target->query, expected);
}

TEST(TargetTest, IncompleteEscapesAndNulAreRefused) {
    for (const char* const target : {"/%", "/%2", "/%2x", "/%g0", "/a%00b", "/?a=%00", "/?%0=b"}) {
        EXPECT_FALSE(ReadTarget(target)) << target;
    }
}

TEST(TargetTest, OnlyTargetsWithASlashAreTaken) {
    for (const char* const target : {"", "*", "http://127.0.0.1/", "a/b"}) {
        EXPECT_FALSE(ReadTarget(target)) << target;
    }
}

} // namespace
