#pragma once

#include <string>

/// A unique endpoint name, also among other test programs. The sockets of this process are in a directory that is
/// removed at its end. Call it before creating a transmitter.
std::string NewEndpointName();
