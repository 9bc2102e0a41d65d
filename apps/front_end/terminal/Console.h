#pragma once

#include <cstddef>
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
    /// True if colours are enabled; never without a terminal.
    virtual bool HasColours() const = 0;
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
