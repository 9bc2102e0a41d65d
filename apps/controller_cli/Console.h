#pragma once

#include <cstddef>
#include <string_view>

#include "platform/system/Error.h"

namespace controller_cli {

/// Thrown where results cannot be written: a command whose results are lost has failed.
struct OutputFailure {
    platform::Error error;
};

/// Where a command writes to, and what that can show. Results that cannot be written throw `OutputFailure`.
class Console {
public:
    /// Results, to standard output.
    virtual void Write(std::wstring_view text) = 0;
    /// Bytes of a file, to standard output as they are.
    virtual void WriteBytes(std::string_view bytes) = 0;
    /// Why something could not be done, to standard error. What cannot be written there is lost.
    virtual void WriteError(std::wstring_view text) = 0;

    /// Signalled when nobody reads the results any more (`platform::WaitForAny`); null where only a write tells so. The
    /// console's own.
    virtual void* ReaderGone() const = 0;

    /// True when lines that were written can be drawn over.
    virtual bool IsTerminal() const = 0;
    /// True when colours are wanted; never without a terminal.
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

} // namespace controller_cli
