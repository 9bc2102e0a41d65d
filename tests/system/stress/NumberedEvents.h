#pragma once

#include "CommonControllerLib/CallbackFunctor.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

/// One event of a numbered stream. Its payload has a varying length, from the bare number to many kilobytes, and
/// reveals missing or foreign parts.
struct NumberedEvent {
    std::wstring stream;
    std::uint32_t number = 0;

    bool operator==(const NumberedEvent&) const = default;

    std::wstring Payload() const;
    /// Nothing if it is not a complete payload.
    [[nodiscard]] static std::optional<NumberedEvent> Read(const std::wstring& payload);
};

/// Receives numbered events, from any thread, and checks that each stream arrives in order without duplicates.
class StreamCheck {
public:
    /// What is valid: all numbers from 1; all numbers after the first; increasing numbers.
    enum class Streams { Whole, BegunAnywhere, WithGaps };

    explicit StreamCheck(Streams rightStreams = Streams::Whole) : right(rightStreams) {}

    void Take(const std::wstring& payload);

    /// The last received number of a stream; 0 before the first.
    std::uint32_t LastOf(const std::wstring& stream) const;
    std::uint64_t Count() const;
    /// All errors found.
    std::vector<std::string> Problems() const;

private:
    bool MayFollow(std::uint32_t number, std::uint32_t before) const;

    const Streams right;
    mutable std::mutex mutex;
    std::map<std::wstring, std::uint32_t> last;
    std::uint64_t count = 0;
    std::vector<std::string> problems;
};

/// Passes its events to a check. The thread sanitizer detects calls after its removal, and concurrent calls.
class CheckingHandler final : public CallbackFunctor {
public:
    explicit CheckingHandler(StreamCheck& streamCheck) : check(streamCheck) {}

    bool operator()(const std::wstring& payload) override;

private:
    StreamCheck& check;
    /// Guarded only by the promise of transmitters: one call of a handler at a time.
    std::uint64_t calls = 0;
};
