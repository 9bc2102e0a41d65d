#include "formats/ManifestRules.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <set>

#include "formats/zip/ZipError.h"
#include "formats/zip/ZipName.h"
#include "text/EscapeControls.h"
#include "text/Text.h"

namespace scenario_manifest {
namespace {

constexpr std::size_t mostElements = 100;
constexpr std::size_t mostAllowedValues = 1000;
constexpr std::size_t mostExitCodes = 256;
constexpr std::size_t longestText = 4096;

bool IsName(const std::wstring& text, std::size_t longest) {
    return !text.empty() && text::IsOneLine(text, longest);
}

/// Rejects "inf" and "nan", which scenarios could not parse.
template <typename Number>
bool IsNumber(const std::wstring& text) {
    const std::string digits = text::ToUtf8(text);
    Number number = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return result.ec == std::errc() && result.ptr == digits.data() + digits.size() && std::isfinite(number);
}

bool IsOfType(const std::wstring& value, const std::wstring& type) {
    if (type == L"integer") {
        return IsNumber<std::int64_t>(value);
    }
    if (type == L"number") {
        return IsNumber<double>(value);
    }
    return type != L"boolean" || value == L"true" || value == L"false";
}

std::wstring At(const std::wstring& list, std::size_t index) {
    return list + L"[" + std::to_wstring(index) + L"]";
}

std::wstring TooMany(const std::wstring& list, std::size_t most) {
    return list + L": expected at most " + std::to_wstring(most) + L" elements";
}

std::wstring WrongValueOf(const ScenarioParameter& parameter) {
    const auto& allowed = parameter.allowedValues;
    const std::wstring& initial = parameter.defaultValue;
    const auto isWrong = [&](const std::wstring& value) { return !IsOfType(value, parameter.type); };
    if (allowed.size() > mostAllowedValues) {
        return TooMany(L"allowedValues", mostAllowedValues);
    }
    if (std::any_of(allowed.begin(), allowed.end(), isWrong)) {
        return L"allowedValues: expected values of the type \"" + parameter.type + L"\"";
    }
    if (parameter.type == L"choice" && allowed.empty()) {
        return L"allowedValues: expected what can be chosen, because the type is \"choice\"";
    }
    if (!initial.empty() && isWrong(initial)) {
        return L"defaultValue: expected a value of the type \"" + parameter.type + L"\", found \"" + initial + L"\"";
    }
    if (!initial.empty() && !allowed.empty() && std::find(allowed.begin(), allowed.end(), initial) == allowed.end()) {
        return L"defaultValue: expected one of the allowed values, found \"" + initial + L"\"";
    }
    return {};
}

std::wstring WrongParameterOf(const ScenarioParameterSetInfo& set) {
    if (set.parameters.size() > mostElements) {
        return TooMany(L"parameters", mostElements);
    }
    std::set<std::wstring> names;
    for (std::size_t index = 0; index < set.parameters.size(); ++index) {
        const ScenarioParameter& parameter = set.parameters[index];
        if (!names.insert(parameter.name).second) {
            return At(L"parameters", index) + L".name: expected a name of its own, found \"" + parameter.name +
                   L"\" again";
        }
        const std::wstring wrong = WrongValueOf(parameter);
        if (!wrong.empty()) {
            return At(L"parameters", index) + L"." + wrong;
        }
    }
    return {};
}

std::wstring WrongParameterSetOf(const ScenarioManifest& manifest) {
    if (manifest.parameterSets.size() > mostElements) {
        return TooMany(L"parameterSets", mostElements);
    }
    std::set<std::wstring> ids;
    for (std::size_t index = 0; index < manifest.parameterSets.size(); ++index) {
        const ScenarioParameterSetInfo& set = manifest.parameterSets[index];
        if (!ids.insert(set.id).second) {
            return At(L"parameterSets", index) + L".id: expected an id of its own, found \"" + set.id + L"\" again";
        }
        const std::wstring wrong = WrongParameterOf(set);
        if (!wrong.empty()) {
            return At(L"parameterSets", index) + L"." + wrong;
        }
    }
    return {};
}

bool HasTooManyExtensions(const InputFileSpec& input) {
    return input.extensions.size() > mostElements;
}

} // namespace

bool DisplayName::Accepts(const std::wstring& name) {
    return IsName(name, 200);
}

bool Description::Accepts(const std::wstring& text) {
    return text.size() <= longestText && text.find(L'\0') == std::wstring::npos;
}

bool Identifier::Accepts(const std::wstring& name) {
    return IsName(name, 100) && name.find_first_of(L" \"=") == std::wstring::npos;
}

bool CadName::Accepts(const std::wstring& name) {
    return text::IsOneLine(name, 100);
}

bool Extension::Accepts(const std::wstring& extension) {
    return IsName(extension, 32) && extension.front() != L'.' && extension.find_first_of(L"/\\:") == std::wstring::npos;
}

bool ParameterType::Accepts(const std::wstring& type) {
    constexpr std::array<const wchar_t*, 5> types = {L"text", L"integer", L"number", L"boolean", L"choice"};
    return std::find(types.begin(), types.end(), type) != types.end();
}

bool ParameterValue::Accepts(const std::wstring& value) {
    return text::IsOneLine(value, longestText);
}

bool FileInPackage::Accepts(const std::wstring& name) {
    try {
        return !zip::CheckedName(text::ToUtf8(name)).ends_with(L'/');
    } catch (const zip::Problem&) {
        return false;
    }
}

bool Interpreter::Accepts(const std::wstring& name) {
    return IsName(name, 260) && name.find_first_of(L"/\\:") == std::wstring::npos;
}

std::wstring FindContradiction(const ScenarioManifest& manifest) {
    if (manifest.successExitCodes.empty() || manifest.successExitCodes.size() > mostExitCodes) {
        return L"successExitCodes: expected 1 to 256 exit codes";
    }
    if (manifest.inputs.size() > mostElements) {
        return TooMany(L"inputs", mostElements);
    }
    if (std::any_of(manifest.inputs.begin(), manifest.inputs.end(), HasTooManyExtensions)) {
        return TooMany(L"inputs.extensions", mostElements);
    }
    const std::wstring wrong = slurm::FindContradiction(manifest.slurm, manifest.timeLimitSeconds);
    return wrong.empty() ? WrongParameterSetOf(manifest) : wrong;
}

std::wstring FindWhatCannotRun(const ScenarioManifest& manifest) {
    if (manifest.entryPoint.empty() == manifest.executable.empty()) {
        return L"expected either \"entryPoint\" with \"interpreter\", or \"executable\"";
    }
    if (manifest.entryPoint.empty() != manifest.interpreter.empty()) {
        return L"interpreter: expected together with \"entryPoint\"";
    }
    return {};
}

} // namespace scenario_manifest
