#pragma once

#include "formats/ScenarioManifest.h"

#include <cstdint>
#include <string>

/// The rules for the values of a manifest (rules of `CheckedValue`), and the conditions between them.
namespace scenario_manifest {

struct TextRule {
    using Value = std::wstring;
    static constexpr auto initial = L"";
};

struct DisplayName : TextRule {
    static constexpr auto expected = L"a text of 1 to 200 characters on one line";
    static bool Accepts(const std::wstring& name);
};

struct Description : TextRule {
    static constexpr auto expected = L"a text of at most 4096 characters";
    static bool Accepts(const std::wstring& text);
};

/// Used in a run argument: `id name=value`.
struct Identifier : TextRule {
    static constexpr auto expected = L"a name of 1 to 100 characters without blanks, quotes and \"=\"";
    static bool Accepts(const std::wstring& name);
};

struct CadName : TextRule {
    static constexpr auto expected = L"a text of at most 100 characters on one line";
    static bool Accepts(const std::wstring& name);
};

struct Extension : TextRule {
    static constexpr auto expected = L"a file extension of 1 to 32 characters without the dot in front";
    static bool Accepts(const std::wstring& extension);
};

struct ParameterType {
    using Value = std::wstring;
    static constexpr auto initial = L"text";
    static constexpr auto expected = L"\"text\", \"integer\", \"number\", \"boolean\" or \"choice\"";
    static bool Accepts(const std::wstring& type);
};

struct ParameterValue : TextRule {
    static constexpr auto expected = L"a text of at most 4096 characters on one line";
    static bool Accepts(const std::wstring& value);
};

struct FileInPackage : TextRule {
    static constexpr auto expected = L"the name of a file in the package, with slashes";
    static bool Accepts(const std::wstring& name);
};

struct Interpreter : TextRule {
    static constexpr auto expected = L"the name of a program of 1 to 260 characters without its folder";
    static bool Accepts(const std::wstring& name);
};

struct TimeLimit {
    using Value = std::int32_t;
    static constexpr Value initial = 0;
    static constexpr auto expected = L"a whole number of seconds from 0 (no limit) to 604800";
    static bool Accepts(Value seconds) { return seconds >= 0 && seconds <= 604800; }
};

/// Returns the first member that conflicts with others, with what was expected; empty if there is none.
std::wstring FindContradiction(const ScenarioManifest& manifest);

/// Returns why a package with this manifest cannot be run; empty if it can.
std::wstring FindWhatCannotRun(const ScenarioManifest& manifest);

} // namespace scenario_manifest
