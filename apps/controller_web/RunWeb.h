#pragma once

#include "controller_web/WebOptions.h"
#include "controller_web/http/Assets.h"
#include "controller_web/http/Handler.h"

#include <functional>
#include <memory>
#include <span>
#include <string>

namespace web {

/// Exit codes of `controller_web`.
enum class WebExit { Ended = 0, CouldNotRun = 1, WrongUse = 2, AlreadyRunning = 4 };

/// What the server is made of.
struct WebParts {
    std::span<const Asset> page;
    /// Makes the handler of the HTTP interface.
    std::function<std::unique_ptr<Handler>(bool isReadOnly)> makeHandler;
};

/// Runs the server until it is asked to end. Prints a one-time link, unless another program waits for it
/// (`WebOptions::readyEvent`). If a server runs already, prints a link for it and returns.
WebExit RunWeb(const WebOptions& options, const WebParts& parts);

/// Ends the server that runs for the job list of the settings.
WebExit StopWeb();

/// Makes a one-time link for the page at this address, prints it, and opens it in a browser if the options say so.
WebExit OfferLink(const std::string& address, const WebOptions& options);

/// Writes a problem to standard error and the log, and returns `code`.
WebExit Refuse(const std::wstring& problem, WebExit code = WebExit::CouldNotRun);

} // namespace web
