#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

class EventTransmitter;
class EventTransmitterExtension;

/// Loads an event transmitter module and obtains transmitters from it.
///
/// The module is a shared library with one required export, found by its undecorated name:
///
///     EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId);
///
/// A second export is optional: see `EventTransmitterExtension`.
///
/// Strings cross the module boundary, so the module must use the same standard library and heap as this library.
/// Threads: one at a time.
class CONTROLLER_API EventTransmitterManager {
public:
    /// Loads the module and never unloads it: its transmitters stay valid until the process ends, even after this
    /// object is destroyed. Each construction takes one more reference to the module. A module that cannot be loaded is
    /// not reported here; `GetEventTransmitter` then returns null.
    explicit EventTransmitterManager(const std::wstring& modulePath);

    /// Returns the module's transmitter for an identifier. The module defines what an identifier means and whether the
    /// same identifier yields the same object. The module owns the transmitter. On failure (no module, no export, or no
    /// such transmitter) returns null and logs nothing. Exceptions of the module propagate.
    EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId);

    /// Returns the optional operations of the transmitter for this identifier. The module owns them. On failure (no
    /// module, no second export, or no extension of this library's version) returns null and logs nothing.
    EventTransmitterExtension* GetExtension(const std::wstring& transmitterId);

private:
    /// The system's module handle; null when the module could not be loaded.
    void* module;
};
