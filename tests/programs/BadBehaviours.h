#pragma once

#include <functional>
#include <map>
#include <string>

/// Steps of a scenario, by the beginning of their text; what follows it is their own.
using Steps = std::map<std::wstring, std::function<void(const std::wstring&)>>;

/// What no well-behaved scenario does, on any system.
Steps CommonBadBehaviours();

/// The same, as far as this system can.
Steps SystemBadBehaviours();
