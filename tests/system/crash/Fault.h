#pragma once

#include "fault_points/FaultPoint.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace crash {

inline constexpr auto faultPointCount = static_cast<std::size_t>(fault_points::FaultPoint::Count);

/// The name of each point in messages, in the order of the enumeration.
extern const std::array<const char*, faultPointCount> faultPointNames;

/// The kill of a host at a point, at the `pass`th time that it is passed.
struct Fault {
    fault_points::FaultPoint point = fault_points::FaultPoint::Count;
    int pass = 1;
};

/// The environment variable that names the file with the fault of a host.
inline constexpr auto faultFileVariable = L"CONTROLLER_FAULT_FILE";
std::string FaultText(const Fault& fault);
/// Nothing if the text is not a fault.
[[nodiscard]] std::optional<Fault> ParseFault(const std::string& text);

} // namespace crash
