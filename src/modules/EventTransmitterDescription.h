#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

/// What an event transmitter module says of a transmitter, for people.
struct EventTransmitterDescription {
    /// Where both ends meet; empty: the module does not say.
    std::wstring place;
    /// Why the module gave no transmitter for this identifier the last time it was asked; empty: it did not fail, or it
    /// does not say.
    std::wstring problem;
};

/// Asks the module at `modulePath`, which may have besides its required export this one, under its undecorated name:
///
///     void DescribeEventTransmitter(const std::wstring& transmitterId, std::wstring& place, std::wstring& problem);
///
/// Without it the description is empty. Exceptions of the module pass through. One thread at a time.
CONTROLLER_API EventTransmitterDescription DescribeEventTransmitter(const std::wstring& modulePath,
                                                                    const std::wstring& transmitterId);
