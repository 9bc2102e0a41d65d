#pragma once

#include <string>

#include "platform/system/Error.h"

namespace platform {

/// Opens an address ("http://...", "https://...") in the user's browser and does not wait for it. Fails with
/// `NotSupported` for any other text, and with `NotFound` if the session has no display or no browser. Threads: any.
Error OpenInBrowser(const std::wstring& address);

/// True for an address that `OpenInBrowser` accepts: an http or https address of visible ASCII characters.
bool IsWebAddress(const std::wstring& address);

} // namespace platform
