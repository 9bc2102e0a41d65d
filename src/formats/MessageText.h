#pragma once

#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "ControllerCSWrapper/ControllerCSWrapper.h"
#include "formats/Boundary.h"
#include "formats/json/Reading.h"
#include "formats/json/Writing.h"

/// Messages of any record, in both directions.
namespace message_text {

/// Appends `more` to `list`: all of it, or nothing and an exception.
template <typename Element>
void AppendAll(std::vector<Element>& list, std::vector<Element>&& more) {
    if (list.empty()) {
        list = std::move(more);
        return;
    }
    list.reserve(list.size() + more.size());
    list.insert(list.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

/// Takes the content over: lists are appended to, other values replaced.
template <typename Value>
void Store(Value& content, Value& value) {
    if constexpr (json::isList<Value>) {
        AppendAll(value, std::move(content));
    } else {
        value = std::move(content);
    }
}

/// Empty when memory runs out.
template <typename Value>
std::wstring Serialize(const std::wstring& name, const Value& value) noexcept {
    return boundary::Guard("Serialize", [&] { return json::WriteEnvelope(name, value); });
}

/// The content of a message. A refusal is logged and leaves `value` as it was.
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
