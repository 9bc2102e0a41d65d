#pragma once

#include "fault_points/FaultPoint.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>

namespace crash {

inline constexpr auto faultPointCount = static_cast<std::size_t>(fault_points::FaultPoint::Count);

/// What each point is called where people read it, in the order of the enumeration.
extern const std::array<const char*, faultPointCount> faultPointNames;

/// The sudden end of a host: at a point, when it is passed for the `pass`th time.
struct Fault {
    fault_points::FaultPoint point = fault_points::FaultPoint::Count;
    int pass = 1;
};

/// How a host is told its fault: the text of the file that this environment variable names.
inline constexpr auto faultFileVariable = L"CONTROLLER_FAULT_FILE";
std::string FaultText(const Fault& fault);
/// Nothing when the text is not one.
[[nodiscard]] std::optional<Fault> ParseFault(const std::string& text);

} // namespace crash
