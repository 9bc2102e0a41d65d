#include "controller_web/WebOptions.h"

#include <algorithm>
#include <iterator>

#include <CLI/CLI.hpp>

#include "text/Text.h"

namespace web {
namespace {

constexpr char about[] =
    "Shows the queue of jobs as a web page on this machine, for its user only. Prints a link that signs "
    "one browser in, and opens it. A server that runs already is used.";

constexpr char footer[] =
    "Settings: the group \"web\" of the file named by CONTROLLER_SETTINGS_FILE, or of the user's own.\n"
    "Ends on Ctrl-C, SIGTERM and at the end of the session; running jobs go on.\n"
    "Exit code: 0 ended or now running, 1 could not run, 2 wrong use.";

/// The library expects its arguments in reverse order.
std::vector<std::string> ReversedUtf8(const std::vector<std::wstring>& arguments) {
    std::vector<std::string> reversed;
    std::transform(arguments.rbegin(), arguments.rend(), std::back_inserter(reversed), text::ToUtf8);
    return reversed;
}

class Parser {
public:
    Parser() {
        app.allow_windows_style_options(false);
        app.get_formatter()->column_width(24);
        app.add_flag("--background", isInBackground, "detach from the terminal; returns once the page can be opened");
        app.add_flag("--stop", isStop, "end the server that runs");
        app.add_option("--port", port, "the port on this machine; 0: any free one")
            ->type_name("NUMBER")
            ->check(CLI::Range(0, 65535));
        app.add_flag("--read-only", isReadOnly, "show the queue, change nothing");
        app.add_flag("--no-browser", hasNoBrowser, "only print the link");
        app.add_option("--ready-event", readyEvent)->group("");
        app.add_flag("--version", isVersion, "the version");
        app.footer(footer);
    }

    WebOptions Parse(const std::vector<std::wstring>& arguments) {
        try {
            app.parse(ReversedUtf8(arguments));
        } catch (const CLI::CallForHelp&) {
            return {.mode = WebOptions::Mode::Help, .message = app.help()};
        } catch (const CLI::ParseError& error) {
            return {.mode = WebOptions::Mode::Wrong, .message = error.what()};
        }
        return Options();
    }

private:
    WebOptions Options() const {
        using Mode = WebOptions::Mode;
        WebOptions options;
        options.mode = isVersion        ? Mode::Version
                       : isStop         ? Mode::Stop
                       : isInBackground ? Mode::Background
                                        : Mode::Foreground;
        if (port) {
            options.port = static_cast<std::uint16_t>(*port);
        }
        options.isReadOnly = isReadOnly;
        options.opensBrowser = !hasNoBrowser;
        options.readyEvent = text::FromUtf8(readyEvent);
        return options;
    }

    CLI::App app{about, "controller_web"};
    bool isInBackground = false;
    bool isStop = false;
    std::optional<int> port;
    bool isReadOnly = false;
    bool hasNoBrowser = false;
    std::string readyEvent;
    bool isVersion = false;
};

} // namespace

WebOptions ParseWebOptions(const std::vector<std::wstring>& arguments) {
    return Parser().Parse(arguments);
}

} // namespace web
