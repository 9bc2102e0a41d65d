#pragma once

#include <functional>
#include <map>
#include <string>

/// Steps of a scenario by the beginning of their text; the function receives the rest.
using Steps = std::map<std::wstring, std::function<void(const std::wstring&)>>;

/// Misbehaviour that exists on all systems.
Steps CommonBadBehaviours();

/// Misbehaviour of this system.
Steps SystemBadBehaviours();
