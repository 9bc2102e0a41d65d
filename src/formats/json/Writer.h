#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "CommonControllerLib/Export.h"

namespace json {

/// Appends to a text by a pointer. During the lifetime of this object the text is longer than what was written, and
/// only this object may use it. Not thread-safe.
class Writer {
public:
    explicit Writer(std::wstring& json) : text(json), next(End()), end(next) {}
    ~Writer() { text.resize(Length()); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    std::size_t Length() const { return static_cast<std::size_t>(next - text.data()); }
    /// The last element; there must be one.
    wchar_t Last() const { return next[-1]; }

    void Put(wchar_t element) {
        wchar_t* const to = Room(1);
        *to = element;
        Advance(to + 1);
    }
    void Put(std::wstring_view piece) { Advance(std::copy(piece.begin(), piece.end(), Room(piece.size()))); }

    /// Returns the place for the next elements, at least `count`; `Advance` appends those that were written there.
    wchar_t* Room(std::size_t count) {
        if (static_cast<std::size_t>(end - next) < count) {
            Grow(count);
        }
        return next;
    }
    void Advance(wchar_t* to) { next = to; }

    /// Removes what was written behind `length`.
    void Cut(std::size_t length) { next = text.data() + length; }

    /// Allocates memory for a text that will be this long.
    CONTROLLER_API void Reserve(std::size_t length);

private:
    wchar_t* End() { return text.data() + text.size(); }
    /// The text grows in pieces that stay in the cache of the processor: a new piece is filled with zeros.
    CONTROLLER_API void Grow(std::size_t count);

    std::wstring& text;
    wchar_t* next;
    wchar_t* end;
};

} // namespace json
