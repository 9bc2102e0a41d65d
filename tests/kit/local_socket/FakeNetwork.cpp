#include "kit/local_socket/FakeNetwork.h"

#include <algorithm>
#include <utility>

namespace {

using local_socket::Channel;

class FakeChannel final : public Channel {
public:
    explicit FakeChannel(FakeConnection& testSide) : connection(testSide) {}

    void Read(char* buffer, std::size_t size, Done done) override {
        connection.readBuffer = buffer;
        connection.readSize = size;
        connection.reading = std::move(done);
    }

    void Write(const char* bytes, std::size_t size, Done done) override {
        if (connection.failsWrites) {
            done(false, 0);
        } else if (connection.takesWrites) {
            connection.written.append(bytes, size);
            done(true, size);
        } else {
            connection.toWrite = {bytes, size};
            connection.writing = std::move(done);
        }
    }

    void Close() override {
        connection.isClosed = true;
        connection.reading = nullptr;
        connection.writing = nullptr;
    }

private:
    FakeConnection& connection;
};

} // namespace

void FakeConnection::Receive(std::string_view bytes) {
    while (!bytes.empty() && reading) {
        const std::size_t count = bytes.copy(readBuffer, readSize);
        bytes.remove_prefix(count);
        std::exchange(reading, nullptr)(true, count);
    }
}

void FakeConnection::TakeWrite() {
    takesWrites = true;
    written += toWrite;
    std::exchange(writing, nullptr)(true, toWrite.size());
}

void FakeConnection::ReceiveEnd() {
    std::exchange(reading, nullptr)(false, 0);
}

class FakeNetwork::FakeTimer final : public local_socket::Timer {
public:
    FakeTimer(FakeNetwork& owner, std::shared_ptr<Alarm> ownAlarm) : network(owner), alarm(std::move(ownAlarm)) {}

    void Start(std::chrono::milliseconds delay, std::function<void()> expired) override {
        alarm->time = network.now + delay;
        alarm->expired = std::move(expired);
    }

    void Cancel() override { alarm->expired = nullptr; }

private:
    FakeNetwork& network;
    const std::shared_ptr<Alarm> alarm;
};

std::unique_ptr<Channel> FakeNetwork::ChannelTo(FakeConnection& connection) {
    return std::make_unique<FakeChannel>(connection);
}

void FakeNetwork::Advance(std::chrono::milliseconds time) {
    now += time;
    const std::vector<std::shared_ptr<Alarm>> all = alarms;
    for (const std::shared_ptr<Alarm>& alarm : all) {
        if (alarm->expired && alarm->time <= now) {
            std::exchange(alarm->expired, nullptr)();
        }
    }
}

std::unique_ptr<local_socket::Timer> FakeNetwork::MakeTimer() {
    alarms.push_back(std::make_shared<Alarm>());
    return std::make_unique<FakeTimer>(*this, alarms.back());
}
