#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

/// An event transmitter module's description of a transmitter, for people.
struct EventTransmitterDescription {
    /// The endpoint; empty if the module does not provide it.
    std::wstring place;
    /// Why the module returned no transmitter for this identifier at the last request; empty if it did not fail or does
    /// not provide a reason.
    std::wstring problem;
};

/// Asks the module at `modulePath` for the description of a transmitter. The module may have this optional export,
/// under its undecorated name:
///
///     void DescribeEventTransmitter(const std::wstring& transmitterId, std::wstring& place, std::wstring& problem);
///
/// Without it the description is empty. Exceptions of the module propagate. Threads: one at a time.
CONTROLLER_API EventTransmitterDescription DescribeEventTransmitter(const std::wstring& modulePath,
                                                                    const std::wstring& transmitterId);
