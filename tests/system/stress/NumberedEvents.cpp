#include "system/stress/NumberedEvents.h"

#include "text/Text.h"

#include <cstddef>

namespace {

/// Most are short, some fill several reads of a connection.
std::size_t FillerLength(std::uint32_t number) {
    if (number % 97 == 0) {
        return 300'000;
    }
    return number % 7 == 0 ? number * 37 % 20'000 : number % 50;
}

} // namespace

std::wstring NumberedEvent::Payload() const {
    const std::wstring head = stream + L':' + std::to_wstring(number) + L':';
    return head + std::wstring(FillerLength(number), static_cast<wchar_t>(L'a' + number % 26));
}

std::optional<NumberedEvent> NumberedEvent::Read(const std::wstring& payload) {
    const std::size_t first = payload.find(L':');
    const std::size_t second = payload.find(L':', first + 1);
    if (first == std::wstring::npos || second == std::wstring::npos) {
        return std::nullopt;
    }
    const NumberedEvent event{payload.substr(0, first),
                              static_cast<std::uint32_t>(std::stoul(payload.substr(first + 1, second - first - 1)))};
    return event.Payload() == payload ? std::optional(event) : std::nullopt;
}

void StreamCheck::Take(const std::wstring& payload) {
    const std::optional<NumberedEvent> event = NumberedEvent::Read(payload);
    const std::lock_guard lock(mutex);
    ++count;
    if (!event) {
        problems.push_back("not whole: " + text::ToUtf8(payload.substr(0, 60)));
        return;
    }
    std::uint32_t& before = last[event->stream];
    if (!MayFollow(event->number, before)) {
        problems.push_back(text::ToUtf8(event->stream) + ": " + std::to_string(event->number) + " after " +
                           std::to_string(before));
    }
    before = event->number;
}

bool StreamCheck::MayFollow(std::uint32_t number, std::uint32_t before) const {
    return number == before + 1 || (right == Streams::BegunAnywhere && before == 0) ||
           (right == Streams::WithGaps && number > before);
}

std::uint32_t StreamCheck::LastOf(const std::wstring& stream) const {
    const std::lock_guard lock(mutex);
    const auto found = last.find(stream);
    return found == last.end() ? 0 : found->second;
}

std::uint64_t StreamCheck::Count() const {
    const std::lock_guard lock(mutex);
    return count;
}

std::vector<std::string> StreamCheck::Problems() const {
    const std::lock_guard lock(mutex);
    return problems;
}

bool CheckingHandler::operator()(const std::wstring& payload) {
    ++calls;
    check.Take(payload);
    return true;
}
