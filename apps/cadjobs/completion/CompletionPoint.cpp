#include "cadjobs/completion/CompletionPoint.h"

#include <algorithm>
#include <cstddef>
#include <sstream>

#include "text/Text.h"

namespace front_end {
namespace {

using Place = CompletionPoint::Place;

bool IsOption(const std::wstring& word) {
    return word.starts_with(L"-") && word != L"-";
}

/// "-s" and "--state" are names of one option.
bool HasName(const OptionSpec& option, const std::string& name) {
    std::istringstream names(option.names);
    for (std::string each; std::getline(names, each, ',');) {
        if (each == name) {
            return true;
        }
    }
    return false;
}

/// The option that `word` names, without a value; null if it cannot stand there.
const OptionSpec* OptionIn(const CompletionPoint& point, const std::wstring& word) {
    for (const char* const name : point.Options()) {
        if (const OptionSpec& option = OptionNamed(name); HasName(option, text::ToUtf8(word))) {
            return &option;
        }
    }
    return nullptr;
}

bool TakesValue(const OptionSpec* option) {
    return option != nullptr && option->kind != ValueKind::Flag;
}

const SubcommandSpec* SubcommandNamed(const std::wstring& name) {
    const auto& all = Subcommands();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const SubcommandSpec& spec) { return text::FromUtf8(spec.name) == name; });
    return found == all.end() ? nullptr : &*found;
}

bool IsGroup(const std::wstring& word) {
    const auto& all = Subcommands();
    return std::any_of(all.begin(), all.end(),
                       [&](const SubcommandSpec& spec) { return text::FromUtf8(spec.name).starts_with(word + L" "); });
}

/// Takes a word that is no option and no value of one.
void TakeName(const std::wstring& word, CompletionPoint& point) {
    if (point.subcommand != nullptr) {
        point.operands.push_back(word);
    } else if (point.group.empty() && IsGroup(word)) {
        point.group = word;
    } else {
        point.subcommand = SubcommandNamed(point.group.empty() ? word : point.group + L" " + word);
        point.group.clear();
    }
}

/// Lists have commas between their values.
bool IsList(ValueKind kind) {
    return kind == ValueKind::Jobs || kind == ValueKind::States || kind == ValueKind::Column;
}

void Begin(Place place, ValueKind kind, const std::wstring& typed, CompletionPoint& point) {
    const std::size_t comma = IsList(kind) ? typed.rfind(L',') : std::wstring::npos;
    const std::size_t begin = comma == std::wstring::npos ? 0 : comma + 1;
    point.place = place;
    point.kind = kind;
    point.kept += typed.substr(0, begin);
    point.typed = typed.substr(begin);
}

/// The operands after a scenario are files.
ValueKind KindOfNextOperand(const CompletionPoint& point) {
    const OperandSpec& operand = point.subcommand->operand;
    if (point.operands.size() >= operand.most) {
        return ValueKind::Flag;
    }
    return operand.kind == ValueKind::Scenario && !point.operands.empty() ? ValueKind::File : operand.kind;
}

void TakeLast(const std::wstring& word, bool mayBeOption, CompletionPoint& point) {
    const std::size_t equals = word.find(L'=');
    if (mayBeOption && IsOption(word) && equals != std::wstring::npos) {
        if (const OptionSpec* const option = OptionIn(point, word.substr(0, equals)); TakesValue(option)) {
            point.kept = word.substr(0, equals + 1);
            Begin(Place::OptionValue, option->kind, word.substr(equals + 1), point);
            return;
        }
    }
    if (mayBeOption && word.starts_with(L"-")) {
        Begin(Place::Option, ValueKind::Flag, word, point);
    } else if (point.subcommand == nullptr) {
        Begin(Place::Subcommand, ValueKind::Text, word, point);
    } else {
        Begin(Place::Operand, KindOfNextOperand(point), word, point);
    }
}

void RemoveEqualsSigns(std::vector<std::wstring>& words) {
    if (!words.empty() && words.back() == L"=") {
        words.back().clear();
    }
    std::erase(words, L"=");
}

} // namespace

const std::vector<const char*>& CompletionPoint::Options() const {
    static const std::vector<const char*> common = {"--json", "--color", "--client-only", "--log-file"};
    return subcommand == nullptr ? common : subcommand->options;
}

CompletionPoint PointIn(std::vector<std::wstring> words) {
    RemoveEqualsSigns(words);
    CompletionPoint point;
    const OptionSpec* awaiting = nullptr;
    bool mayBeOption = true;
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        if (TakesValue(awaiting)) {
            awaiting = nullptr;
        } else if (mayBeOption && words[i] == L"--") {
            mayBeOption = false;
        } else if (mayBeOption && IsOption(words[i])) {
            awaiting = OptionIn(point, words[i]);
        } else {
            TakeName(words[i], point);
        }
    }
    const std::wstring last = words.empty() ? std::wstring() : words.back();
    if (TakesValue(awaiting)) {
        Begin(Place::OptionValue, awaiting->kind, last, point);
    } else {
        TakeLast(last, mayBeOption, point);
    }
    return point;
}

} // namespace front_end
