#pragma once

#include <string>

/// The name of an endpoint that no other test has, of no other test program either. The sockets of this process
/// stand in a directory that is removed when it ends. To be called before the test makes a transmitter.
std::string NewEndpointName();
