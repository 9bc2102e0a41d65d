#pragma once

#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Boundary.h"
#include "formats/json/Reading.h"
#include "formats/json/Writing.h"

/// Serialization of messages with any record.
namespace message_text {

/// Appends all elements of `more` to `list`, or throws and appends none.
template <typename Element>
void AppendAll(std::vector<Element>& list, std::vector<Element>&& more) {
    if (list.empty()) {
        list = std::move(more);
        return;
    }
    list.reserve(list.size() + more.size());
    list.insert(list.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

/// Moves the content to `value`: appends lists, replaces other values.
template <typename Value>
void Store(Value& content, Value& value) {
    if constexpr (json::isList<Value>) {
        AppendAll(value, std::move(content));
    } else {
        value = std::move(content);
    }
}

/// Serializes a message. Returns an empty text if memory runs out.
template <typename Value>
std::wstring Serialize(const std::wstring& name, const Value& value) noexcept {
    return boundary::Guard("Serialize", [&] { return json::WriteEnvelope(name, value); });
}

/// Parses the content of a message. On failure logs the error and leaves `value` unchanged.
template <typename Value>
[[nodiscard]] bool Deserialize(const std::wstring& text, Value& value) noexcept {
    return boundary::Guard("Deserialize", [&] {
        json::Envelope<Value> envelope;
        std::wstring problem;
        if (!json::Read(std::wstring_view(text), envelope, problem)) {
            ControllerCSWrapper::WriteErrorLog(L"A message cannot be read: " + problem);
            return false;
        }
        Store(*envelope.content, value);
        return true;
    });
}

} // namespace message_text
