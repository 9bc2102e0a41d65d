#include "controller_host/Output.h"

#include "platform/terminal/Console.h"
#include "text/Text.h"

HostExit Print(std::string_view text) {
    const platform::Error result = platform::WriteOutput(text);
    // A reader that closed the pipe early (`| head`) is not an error.
    if (result || platform::IsReaderGone(result)) {
        return result ? HostExit::Ended : HostExit::ReaderGone;
    }
    platform::WriteErrorOutput("controller_host: standard output cannot be written: " + text::ToUtf8(result.Text()) +
                               "\n");
    return HostExit::WrongUse;
}
