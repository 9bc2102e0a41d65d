#pragma once

#include "formats/ScenarioManifest.h"

#include <cstdint>
#include <string>

/// The rules for the members of a manifest, and the conditions between them.
namespace scenario_manifest {

struct DisplayName {
    static constexpr auto expected = L"a text of 1 to 200 characters on one line";
    static bool Accepts(const std::wstring& name);
};

struct Description {
    static constexpr auto expected = L"a text of at most 4096 characters";
    static bool Accepts(const std::wstring& text);
};

/// Used in a run argument: `id name=value`.
struct Identifier {
    static constexpr auto expected = L"a name of 1 to 100 characters without blanks, quotes and \"=\"";
    static bool Accepts(const std::wstring& name);
};

struct CadName {
    static constexpr auto expected = L"a text of at most 100 characters on one line";
    static bool Accepts(const std::wstring& name);
};

struct Extension {
    static constexpr auto expected = L"a file extension of 1 to 32 characters without the dot in front";
    static bool Accepts(const std::wstring& extension);
};

struct ParameterType {
    static constexpr auto expected = L"\"text\", \"integer\", \"number\", \"boolean\" or \"choice\"";
    static bool Accepts(const std::wstring& type);
};

struct ParameterValue {
    static constexpr auto expected = L"a text of at most 4096 characters on one line";
    static bool Accepts(const std::wstring& value);
};

struct FileInPackage {
    static constexpr auto expected = L"the name of a file in the package, with slashes";
    static bool Accepts(const std::wstring& name);
};

struct Interpreter {
    static constexpr auto expected = L"the name of a program of 1 to 260 characters without its folder";
    static bool Accepts(const std::wstring& name);
};

struct TimeLimit {
    static constexpr auto expected = L"a whole number of seconds from 0 (no limit) to 604800";
    static bool Accepts(std::int32_t seconds) { return seconds >= 0 && seconds <= 604800; }
};

/// Returns the first member that conflicts with others, with what was expected; empty if there is none.
std::wstring FindContradiction(const ScenarioManifest& manifest);

/// Returns why a package with this manifest cannot be run; empty if it can.
std::wstring FindWhatCannotRun(const ScenarioManifest& manifest);

} // namespace scenario_manifest
