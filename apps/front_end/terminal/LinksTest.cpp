#include "front_end/terminal/Links.h"

#include <map>

#include <gtest/gtest.h>

namespace {

bool Shows(const std::map<std::wstring, std::wstring>& variables) {
    return front_end::ShowsLinks([&](const std::wstring& name) {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    });
}

TEST(LinksTest, OnlyKnownTerminalsGetLinks) {
    EXPECT_TRUE(Shows({{L"TERM_PROGRAM", L"vscode"}}));
    EXPECT_TRUE(Shows({{L"TERM", L"xterm-kitty"}}));
    EXPECT_TRUE(Shows({{L"VTE_VERSION", L"7200"}}));
    EXPECT_TRUE(Shows({{L"WT_SESSION", L"5b6f"}}));
    EXPECT_FALSE(Shows({}));
    EXPECT_FALSE(Shows({{L"TERM", L"xterm-256color"}, {L"VTE_VERSION", L"4999"}}));
}

TEST(LinksTest, TheAddressHasNoCharacterThatCouldEndIt) {
    EXPECT_EQ(front_end::LinkTo(L"/home/ann/a b\u00e9\x1b", L"a b"),
              L"\x1b]8;;file:///home/ann/a%20b%C3%A9%1B\x1b\\a b\x1b]8;;\x1b\\");
    EXPECT_EQ(front_end::LinkTo(L"C:\\out", L"out"), L"\x1b]8;;file:///C:/out\x1b\\out\x1b]8;;\x1b\\");
}

} // namespace
