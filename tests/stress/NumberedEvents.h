#pragma once

#include "CommonControllerLib/CallbackFunctor.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// One event of a numbered stream. Its payload has a length of its own, from nothing but the number to many kilobytes,
/// and shows when a part of it is lost or another's.
struct NumberedEvent {
    std::wstring stream;
    std::uint32_t number = 0;

    bool operator==(const NumberedEvent&) const = default;

    std::wstring Payload() const;
    /// Nothing when it is no whole payload.
    [[nodiscard]] static std::optional<NumberedEvent> Read(const std::wstring& payload);
};

/// Takes in numbered events, from any thread, and finds out whether each stream came in order and nothing twice.
class StreamCheck {
public:
    /// What is right: every number from 1 on; every number behind the first that came; numbers that grow.
    enum class Streams { Whole, BegunAnywhere, WithGaps };

    explicit StreamCheck(Streams rightStreams = Streams::Whole) : right(rightStreams) {}

    void Take(const std::wstring& payload);

    /// The last number that came of a stream; 0 before the first.
    std::uint32_t LastOf(const std::wstring& stream) const;
    std::uint64_t Count() const;
    /// What was wrong; empty when nothing was.
    std::vector<std::string> Problems() const;

private:
    bool MayFollow(std::uint32_t number, std::uint32_t before) const;

    const Streams right;
    mutable std::mutex mutex;
    std::map<std::wstring, std::uint32_t> last;
    std::uint64_t count = 0;
    std::vector<std::string> problems;
};

/// Passes what it is given to a check. A thread sanitizer sees when it is called after it was taken away, or twice at
/// once.
class CheckingHandler final : public CallbackFunctor {
public:
    explicit CheckingHandler(StreamCheck& streamCheck) : check(streamCheck) {}

    bool operator()(const std::wstring& payload) override;

private:
    StreamCheck& check;
    /// Not guarded by anything but the promise of transmitters: one handler at a time.
    std::uint64_t calls = 0;
};
