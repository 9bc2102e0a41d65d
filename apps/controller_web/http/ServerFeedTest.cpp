#include "controller_web/http/Server.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>

#include <gtest/gtest.h>

#include "kit/web/ServerFixture.h"

using test_support::RawAnswer;
using test_support::RawClient;

namespace {

/// The texts of one feed, which outlive it.
class Texts {
public:
    void Add(const std::string& text) {
        const std::lock_guard lock(mutex);
        texts.push_back(std::make_shared<const std::string>(text));
        Wake();
    }
    void End() {
        const std::lock_guard lock(mutex);
        isEnded = true;
        Wake();
    }
    void AwaitFeeds(int count) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return feeds == count; });
    }

    std::shared_ptr<const std::string> Take() {
        const std::lock_guard lock(mutex);
        if (texts.empty()) {
            return isEndless ? std::make_shared<const std::string>(100'000, 'x') : nullptr;
        }
        auto text = texts.front();
        texts.pop_front();
        return text;
    }
    bool HasEnded() {
        const std::lock_guard lock(mutex);
        return isEnded && texts.empty();
    }
    void Connect(std::function<void()> wakeFeed) {
        const std::lock_guard lock(mutex);
        wake = std::move(wakeFeed);
        ++feeds;
        changed.notify_all();
    }
    void Disconnect() {
        const std::lock_guard lock(mutex);
        wake = nullptr;
        --feeds;
        changed.notify_all();
    }

    bool isEndless = false;

private:
    void Wake() {
        if (wake) {
            wake();
        }
    }

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::shared_ptr<const std::string>> texts;
    std::function<void()> wake;
    bool isEnded = false;
    int feeds = 0;
};

class Feed final : public web::EventFeed {
public:
    explicit Feed(Texts& feedTexts) : texts(feedTexts) {}
    ~Feed() override {
        if (isConnected) {
            texts.Disconnect();
        }
    }
    std::shared_ptr<const std::string> Next() override { return texts.Take(); }
    bool IsAtEnd() const override { return texts.HasEnded(); }
    void OnNews(std::function<void()> wake) override {
        isConnected = true;
        texts.Connect(std::move(wake));
    }

private:
    Texts& texts;
    bool isConnected = false;
};

class ServerFeedTest : public ServerFixture {
protected:
    ServerFeedTest() {
        answer = [this](const web::Request&) {
            web::Response response;
            response.headers = {{"Content-Type", mediaType}};
            response.body = std::make_unique<Feed>(texts);
            return response;
        };
    }
    ~ServerFeedTest() override { Stop(); }

    std::string mediaType = "text/event-stream";
    Texts texts;
};

TEST_F(ServerFeedTest, TextsArriveAsTheyCome) {
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("GET", "/api/v1/events")));
    texts.AwaitFeeds(1);
    for (int count = 0; count < 100; ++count) {
        const std::string text = "data: " + std::to_string(count) + "\n\n";
        texts.Add(text);
        EXPECT_TRUE(client.ReceiveUntil(text).ends_with(text));
    }
}

TEST_F(ServerFeedTest, AFeedThatEndsHasALastChunk) {
    Start();
    texts.Add("one");
    texts.Add("");
    texts.Add("two");
    texts.End();
    const RawAnswer feed = Ask(Request("GET", "/api/v1/events"));
    EXPECT_EQ(feed.body, "onetwo");
    EXPECT_TRUE(feed.isComplete);
    texts.AwaitFeeds(0);
}

TEST_F(ServerFeedTest, AFeedWithoutNewsGetsComments) {
    limits.heartbeat = std::chrono::milliseconds(20);
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("GET", "/api/v1/events")));
    EXPECT_TRUE(client.ReceiveUntil("4\r\n: \n\n\r\n4\r\n: \n\n\r\n").ends_with(": \n\n\r\n"));
}

TEST_F(ServerFeedTest, OtherTextsGetNoComments) {
    mediaType = "text/plain";
    limits.heartbeat = std::chrono::milliseconds(1);
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("GET", "/api/v1/events")));
    texts.AwaitFeeds(1);
    // Another request takes longer than a heartbeat would.
    EXPECT_EQ(Ask(Request("GET", "/")).status, 200U);
    texts.Add("line");
    texts.End();
    EXPECT_EQ(client.Receive().body, "line");
}

TEST_F(ServerFeedTest, AClientThatHasGoneEndsItsFeedAlthoughThereIsNoNews) {
    Start();
    {
        RawClient client(port);
        EXPECT_TRUE(client.Send(Request("GET", "/api/v1/events")));
        texts.AwaitFeeds(1);
    }
    texts.AwaitFeeds(0);
}

TEST_F(ServerFeedTest, AClientThatDoesNotReadIsClosed) {
    texts.isEndless = true;
    limits.writeTime = std::chrono::milliseconds(50);
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("GET", "/api/v1/events")));
    texts.AwaitFeeds(1);
    texts.AwaitFeeds(0);
    EXPECT_EQ(Ask(Request("GET", "/")).status, 200U);
}

TEST_F(ServerFeedTest, AFeedTooManyIsRefused) {
    limits.feeds = 1;
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("GET", "/api/v1/events")));
    texts.AwaitFeeds(1);
    EXPECT_EQ(Ask(Request("GET", "/api/v1/events")).status, 503U);
    texts.Add("still here");
    EXPECT_TRUE(client.ReceiveUntil("still here").ends_with("still here"));
}

TEST_F(ServerFeedTest, StoppingEndsFeedsAndIdleConnections) {
    Start();
    RawClient idle(port);
    EXPECT_TRUE(idle.Send(Request("GET", "/")));
    EXPECT_EQ(idle.Receive().status, 200U);
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("GET", "/api/v1/events")));
    texts.AwaitFeeds(1);
    Stop();
    EXPECT_TRUE(client.Receive().isComplete);
    EXPECT_EQ(idle.ReceiveRest(), "");
}

TEST_F(ServerFeedTest, StoppingEndsAFeedWhoseClientDoesNotRead) {
    texts.isEndless = true;
    limits.stopTime = std::chrono::milliseconds(50);
    Start();
    RawClient client(port);
    EXPECT_TRUE(client.Send(Request("GET", "/api/v1/events")));
    texts.AwaitFeeds(1);
    Stop();
    texts.AwaitFeeds(0);
}

TEST_F(ServerFeedTest, StoppingWhileManyFeedsAreOpenLeavesNone) {
    limits.feeds = 200;
    Start();
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int count = 1; count <= 200; ++count) {
        clients.push_back(std::make_unique<RawClient>(port));
        EXPECT_TRUE(clients.back()->Send(Request("GET", "/api/v1/events")));
    }
    texts.AwaitFeeds(200);
    Stop();
    texts.AwaitFeeds(0);
}

} // namespace
