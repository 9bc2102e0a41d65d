#pragma once

#include "CommonControllerLib/Export.h"

#include <string>

class EventTransmitter;
class EventTransmitterExtension;

/// Loads an event transmitter module and asks it for transmitters.
///
/// Such a module is a shared library with one export, found by its undecorated name:
///
///     EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId);
///
/// A second one is optional, see `EventTransmitterExtension`.
///
/// It takes texts of its caller, so it shares the library's standard library and heap. No locking: one thread at a
/// time.
class CONTROLLER_API EventTransmitterManager {
public:
    /// Loads the module and never gives it back: its transmitters stay valid until the process ends, whatever becomes
    /// of this object. A module that cannot be loaded is no failure here. Each construction takes a reference of its
    /// own.
    explicit EventTransmitterManager(const std::wstring& modulePath);

    /// The module's transmitter for an identifier, whose meaning is the module's; whether the same identifier gives the
    /// same object is too. The module owns it. Null, silently, without a module, without the export, or when the module
    /// has none. Exceptions of the module pass through.
    EventTransmitter* GetEventTransmitter(const std::wstring& transmitterId);

    /// What the transmitter for this identifier can do beyond its two operations. The module owns it. Null, silently,
    /// without a module, without the second export, or when the module has no extension of this library's version.
    EventTransmitterExtension* GetExtension(const std::wstring& transmitterId);

private:
    /// As the system gave it; null when the load failed.
    void* module;
};
