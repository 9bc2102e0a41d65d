#include "controller_host/Output.h"

#include "platform/terminal/Console.h"
#include "text/Text.h"

HostExit Print(std::string_view text) {
    const platform::Error error = platform::WriteOutput(text);
    // A reader that closed the pipe early (`| head`) is not an error.
    if (!error || platform::IsReaderGone(error)) {
        return error ? HostExit::ReaderGone : HostExit::Ended;
    }
    platform::WriteErrorOutput("controller_host: standard output cannot be written: " + text::ToUtf8(error.Text()) +
                               "\n");
    return HostExit::WrongUse;
}
