#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/system/Error.h"

namespace front_end {

/// Thrown when results cannot be written: a command that loses its results has failed.
struct OutputFailure {
    platform::Error error;
};

/// The output of a command and its capabilities. Throws `OutputFailure` if results cannot be written.
class Console {
public:
    /// Writes results to standard output.
    virtual void Write(std::wstring_view text) = 0;
    /// Writes bytes of a file unchanged to standard output.
    virtual void WriteBytes(std::string_view bytes) = 0;
    /// Writes an error message to standard error. Write errors are ignored.
    virtual void WriteError(std::wstring_view text) = 0;

    /// Signalled when standard output has lost its reader (`platform::WaitForAny`); null if only a write detects that.
    /// Owned by the console.
    virtual void* ReaderGone() const = 0;

    /// True if written lines can be overwritten.
    virtual bool IsTerminal() const = 0;
    /// True if colours are enabled; without a terminal only after `UseColours`.
    virtual bool HasColours() const = 0;
    /// Overrides what `HasColours` would return.
    virtual void UseColours(bool hasColours) = 0;
    /// True if the terminal shows links (OSC 8).
    virtual bool HasLinks() const = 0;
    /// Shows a question and returns the line that the user types, in lower case and without blanks around it. Nothing
    /// if nobody can be asked: standard input or output is not a terminal.
    virtual std::optional<std::wstring> Ask(std::wstring_view question) = 0;
    /// All of standard input, up to `most` bytes; fails if there is more.
    virtual platform::Error ReadInput(std::size_t most, std::string& bytes) = 0;
    /// Columns and lines of the terminal.
    virtual std::size_t Width() const = 0;
    virtual std::size_t Height() const = 0;

protected:
    Console() = default;
    Console(const Console&) = default;
    Console& operator=(const Console&) = default;
    ~Console() = default;
};

} // namespace front_end
