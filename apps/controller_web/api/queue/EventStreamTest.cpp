#include "controller_web/api/queue/EventStream.h"

#include <thread>

#include <gtest/gtest.h>

namespace {

using web::EventStream;

std::string NextOf(web::EventFeed& feed) {
    const auto text = feed.Next();
    return text == nullptr ? std::string() : *text;
}

/// The value of the line "id: ".
std::string IdOf(const std::string& text) {
    const std::size_t begin = text.find("id: ") + 4;
    return text.substr(begin, text.find('\n', begin) - begin);
}

TEST(EventStreamTest, ANewClientFetchesEverything) {
    EventStream stream;
    stream.Publish("jobs", "{}");
    const auto feed = stream.Open("");
    const std::string text = NextOf(*feed);
    EXPECT_EQ(text, "retry: 2000\nid: " + stream.Position() + "\nevent: reset\ndata: {}\n\n");
    EXPECT_EQ(NextOf(*feed), "");
}

TEST(EventStreamTest, AnEventGoesToEachClientOnce) {
    EventStream stream;
    const auto one = stream.Open("");
    const auto other = stream.Open("");
    NextOf(*one);
    NextOf(*other);
    stream.Publish("jobs", R"({"a":1})");
    const std::string text = "id: " + stream.Position() + "\nevent: jobs\ndata: {\"a\":1}\n\n";
    EXPECT_EQ(NextOf(*one), text);
    EXPECT_EQ(NextOf(*one), "");
    EXPECT_EQ(NextOf(*other), text);
}

TEST(EventStreamTest, AClientContinuesAfterItsLastEvent) {
    EventStream stream;
    stream.Publish("jobs", "1");
    const std::string position = stream.Position();
    stream.Publish("jobs", "2");
    stream.Publish("jobs", "3");
    const auto feed = stream.Open(position);
    EXPECT_NE(NextOf(*feed).find("data: 2\n"), std::string::npos);
    EXPECT_NE(NextOf(*feed).find("data: 3\n"), std::string::npos);
    EXPECT_EQ(NextOf(*feed), "");
}

TEST(EventStreamTest, UnknownIdsMeanAReset) {
    EventStream stream;
    stream.Publish("jobs", "1");
    const std::string position = stream.Position();
    const std::string streamId = position.substr(0, position.rfind('-'));
    for (const std::string& id : {std::string("other-1"), streamId + "-99", streamId + "-1x", streamId + "-",
                                  streamId + "--1", streamId + "-99999999999999999999", std::string("\n")}) {
        EXPECT_NE(NextOf(*stream.Open(id)).find("event: reset"), std::string::npos) << id;
    }
}

TEST(EventStreamTest, AClientThatIsTooFarBehindIsReset) {
    EventStream stream;
    const auto feed = stream.Open("");
    const std::string first = IdOf(NextOf(*feed));
    for (std::size_t i = 0; i <= EventStream::mostEvents; ++i) {
        stream.Publish("jobs", "{}");
    }
    EXPECT_NE(NextOf(*feed).find("event: reset"), std::string::npos);
    EXPECT_EQ(NextOf(*feed), "");
    EXPECT_NE(NextOf(*stream.Open(first)).find("event: reset"), std::string::npos);
}

TEST(EventStreamTest, LargeEventsAreNotKeptWithoutLimit) {
    EventStream stream;
    const auto feed = stream.Open("");
    const std::string first = IdOf(NextOf(*feed));
    for (int i = 0; i < 9; ++i) {
        stream.Publish("jobs", std::string(std::size_t{1} << 20, ' '));
    }
    EXPECT_NE(NextOf(*stream.Open(first)).find("event: reset"), std::string::npos);
}

TEST(EventStreamTest, AResetReachesClientsThatHaveEverything) {
    EventStream stream;
    const auto feed = stream.Open("");
    NextOf(*feed);
    stream.Reset();
    const std::string text = NextOf(*feed);
    EXPECT_NE(text.find("event: reset"), std::string::npos);
    stream.Publish("jobs", "1");
    EXPECT_NE(NextOf(*feed).find("data: 1\n"), std::string::npos);
    EXPECT_NE(NextOf(*stream.Open(IdOf(text))).find("data: 1\n"), std::string::npos);
}

TEST(EventStreamTest, WhatFollowsAResetIsSentToo) {
    EventStream stream;
    const auto feed = stream.Open("");
    NextOf(*feed);
    stream.Reset();
    stream.Publish("host", "1");
    EXPECT_NE(NextOf(*feed).find("event: reset"), std::string::npos);
    EXPECT_NE(NextOf(*feed).find("event: host"), std::string::npos);
    EXPECT_EQ(NextOf(*feed), "");
}

TEST(EventStreamTest, AClientIsWokenUntilItHasGone) {
    EventStream stream;
    auto feed = stream.Open("");
    int wakes = 0;
    feed->OnNews([&] { ++wakes; });
    stream.Publish("jobs", "{}");
    EXPECT_EQ(wakes, 1);
    feed.reset();
    stream.Publish("jobs", "{}");
    EXPECT_EQ(wakes, 1);
    EXPECT_EQ(stream.ClientCount(), 0U);
}

TEST(EventStreamTest, OneClientTooManyIsRefused) {
    EventStream stream;
    std::vector<std::unique_ptr<web::EventFeed>> feeds;
    for (std::size_t i = 0; i < EventStream::mostClients; ++i) {
        feeds.push_back(stream.Open(""));
        EXPECT_NE(feeds.back(), nullptr);
    }
    EXPECT_EQ(stream.Open(""), nullptr);
    feeds.pop_back();
    EXPECT_NE(stream.Open(""), nullptr);
}

TEST(EventStreamTest, ClientsComeAndGoWhileEventsAreSent) {
    EventStream stream;
    std::thread sender([&] {
        for (int i = 0; i < 1000; ++i) {
            stream.Publish("jobs", "{}");
        }
    });
    for (int i = 0; i < 1000; ++i) {
        const auto feed = stream.Open(stream.Position());
        feed->OnNews([] {});
        NextOf(*feed);
    }
    sender.join();
    EXPECT_EQ(stream.ClientCount(), 0U);
}

} // namespace
