#include "controller_web/http/OneTimeLinks.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "controller_web/http/Secrets.h"
#include "kit/TemporaryDirectory.h"
#include "platform/files/Directory.h"
#include "platform/files/FileSystem.h"
#include "platform/system/Clock.h"
#include "text/Text.h"

namespace {

class OneTimeLinksTest : public testing::Test {
protected:
    std::string Make() const {
        std::string secret;
        EXPECT_TRUE(links.Make(secret));
        return secret;
    }

    std::size_t Files() const {
        std::vector<platform::DirectoryEntry> entries;
        EXPECT_TRUE(platform::ListDirectory(directory / L"links", entries));
        return entries.size();
    }

    const TemporaryDirectory directory;
    std::int64_t now = 1'000'000;
    const web::OneTimeLinks links{directory / L"links", [this] { return now; }};
};

TEST_F(OneTimeLinksTest, ALinkIsForOneUse) {
    const std::string secret = Make();
    EXPECT_TRUE(links.Redeem(secret));
    EXPECT_FALSE(links.Redeem(secret));
}

TEST_F(OneTimeLinksTest, ALinkThatAnotherProgramMadeIsKnown) {
    const std::string secret = Make();
    const web::OneTimeLinks other(directory / L"links", [this] { return now; });
    EXPECT_TRUE(other.Redeem(secret));
}

TEST_F(OneTimeLinksTest, ALinkExpires) {
    const std::string one = Make();
    const std::string other = Make();
    now += web::OneTimeLinks::lifeSeconds;
    EXPECT_TRUE(links.Redeem(one));
    now += 1;
    EXPECT_FALSE(links.Redeem(other));
}

TEST_F(OneTimeLinksTest, AClockThatWasSetBackMakesNoLinkLastLonger) {
    const std::string secret = Make();
    now -= 1;
    EXPECT_FALSE(links.Redeem(secret));
}

TEST_F(OneTimeLinksTest, ExpiredLinksAreRemovedWhenOneIsMade) {
    (void)Make();
    (void)Make();
    now += web::OneTimeLinks::lifeSeconds + 1;
    (void)Make();
    EXPECT_EQ(Files(), 1U);
}

TEST_F(OneTimeLinksTest, ALinkThatAnotherProgramIsWritingStays) {
    const std::wstring unfinished =
        directory / (L"links\\" + text::FromUtf8(web::NewSecret()) + L".tmp-0123456789abcdef");
    WriteTextFile(unfinished, "");
    (void)Make();
    EXPECT_TRUE(platform::Exists(unfinished));
}

TEST_F(OneTimeLinksTest, WhatAKilledProgramWasWritingIsRemovedAfterTheLifeOfALink) {
    WriteTextFile(directory / L"links\\unfinished", "");
    now = platform::Now() + web::OneTimeLinks::lifeSeconds + 1;
    (void)Make();
    EXPECT_EQ(Files(), 1U);
}

TEST_F(OneTimeLinksTest, OnlySecretsAreLookedUp) {
    WriteTextFile(directory / L"outside", "2000000");
    (void)Make();
    for (const char* const text : {"", ".", "..", "../outside", "..\\outside", "/etc/passwd"}) {
        EXPECT_FALSE(links.Redeem(text)) << text;
    }
    EXPECT_TRUE(platform::Exists(directory / L"outside"));
}

TEST_F(OneTimeLinksTest, AFileWithoutATimeIsNoLink) {
    const std::string secret = web::NewSecret();
    WriteTextFile(directory / (L"links\\" + text::FromUtf8(secret)), "soon");
    EXPECT_FALSE(links.Redeem(secret));
}

TEST_F(OneTimeLinksTest, OfManyAtOnceOneGetsIn) {
    const std::string secret = Make();
    std::atomic<int> redeemed = 0;
    std::vector<std::thread> threads;
    for (int count = 0; count < 8; ++count) {
        threads.emplace_back([&] { redeemed += links.Redeem(secret) ? 1 : 0; });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(redeemed, 1);
}

TEST_F(OneTimeLinksTest, WithoutADirectoryThereIsNoLink) {
    EXPECT_FALSE(links.Redeem(web::NewSecret()));
}

} // namespace
