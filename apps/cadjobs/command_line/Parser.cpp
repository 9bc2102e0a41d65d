#include "cadjobs/command_line/Parser.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>

#include <CLI/CLI.hpp>

#include "cadjobs/command_line/Subcommands.h"
#include "front_end/command_line/Utf8Arguments.h"
#include "text/NearestName.h"
#include "text/Text.h"

namespace front_end {
namespace {

/// Writes the usage line with the operands as people write them: "Usage: cadjobs list [OPTIONS] [JOB...]".
/// The names that the library makes of repeated operands ("(1x)") are dropped.
class HelpFormatter final : public CLI::Formatter {
public:
    explicit HelpFormatter(const OperandSpec& levelOperand) {
        const std::vector<std::string> words = levelOperand.Words();
        for (std::size_t i = 0; i < words.size(); ++i) {
            const bool isRepeated = i + 1 == words.size() && levelOperand.most > words.size();
            const std::string operand = words[i] + (isRepeated ? "..." : "");
            operands += i < levelOperand.least ? " " + operand : " [" + operand + "]";
        }
    }

    std::string make_usage(const CLI::App* level, std::string name) const override {
        const std::string usage = CLI::Formatter::make_usage(level, std::move(name));
        const std::string options = "[" + get_label("OPTIONS") + "]";
        const std::size_t end = usage.find(options) + options.size();
        return operands.empty() ? usage : usage.substr(0, end) + operands + "\n";
    }

    std::string make_positionals(const CLI::App* /*level*/) const override { return {}; }

private:
    std::string operands;
};

/// One level of the command line with what it may have.
struct Level {
    CLI::App* app = nullptr;
    /// Null for the program itself and for "host".
    const SubcommandSpec* spec = nullptr;
    std::vector<CLI::Option*> operands = {};
};

class Grammar {
public:
    /// `programTexts` is null for a grammar without descriptions, which only the help shows. Both must outlive this
    /// object.
    Grammar(const Texts* programTexts, const std::vector<std::wstring>& programArguments)
        : texts(programTexts), arguments(programArguments), app(Text(L"Program/About"), "cadjobs") {
        Prepare(app);
        app.add_flag("--version")->description(Text(L"Options/version"))->group(Text(L"Program/Options"));
        AddOptions(app, {"--json", "--color", "--client-only", "--log-file"});
        app.footer(Text(L"Program/Selection") + "\n\n" + Text(L"Program/Examples") + "\n\n" +
                   Text(L"Program/ExitCodes") + "\n\n" + Text(L"Program/Environment"));
        for (const SubcommandSpec& spec : Subcommands()) {
            AddSubcommand(spec);
        }
    }

    ParsedCommandLine Parse() {
        // The library hands what follows "--" to the wrong level.
        const auto end = std::find(arguments.begin(), arguments.end(), L"--");
        if (end != arguments.end()) {
            plainOperands.assign(std::next(end), arguments.end());
        }
        try {
            app.parse(ReversedUtf8({arguments.begin(), end}));
        } catch (const CLI::CallForHelp&) {
            return {{.kind = CommandKind::Help}, text::FromUtf8(app.help())};
        } catch (const CLI::ParseError&) {
            // What the library refuses is an option without its value: others take the next word, whatever it is.
            throw UsageProblem{L"Usage/WrongValue", end == arguments.begin() ? L"" : OptionIn(*std::prev(end))};
        }
        RefuseUnknown();
        return {CommandOf(), {}};
    }

private:
    /// Never empty: the library does not name options of a group without a name.
    std::string Text(const std::wstring& key) const { return texts == nullptr ? "-" : text::ToUtf8(texts->Get(key)); }

    void Prepare(CLI::App& level, const OperandSpec& operand = {}) const {
        level.formatter(std::make_shared<HelpFormatter>(operand));
        level.set_help_flag("-h,--help", Text(L"Options/help"))->group(Text(L"Program/Options"));
        level.allow_windows_style_options(false);
        level.allow_extras();
        // Words after a subcommand are not looked up as further ones.
        level.require_subcommand(0, 1);
        level.get_formatter()->label("Usage", Text(L"Program/Usage"));
        level.get_formatter()->label("OPTIONS", Text(L"Program/OPTIONS"));
        level.get_formatter()->label("Positionals", Text(L"Program/Operands"));
        level.get_formatter()->label("SUBCOMMAND", Text(L"Program/Command"));
        level.get_formatter()->column_width(28);
    }

    void AddOptions(CLI::App& level, const std::vector<const char*>& names) const {
        for (const char* const name : names) {
            const OptionSpec& option = OptionNamed(name);
            const std::string description = Text(L"Options/" + text::FromUtf8(option.LongName().substr(2)));
            CLI::Option* const added = option.kind == ValueKind::Flag
                                           ? level.add_flag(option.names)->description(description)
                                           : level.add_option(option.names)
                                                 ->description(description)
                                                 ->expected(1)
                                                 ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
            if (option.kind != ValueKind::Flag) {
                added->type_name(NameOfValue(option.kind));
            }
            added->group(Text(L"Program/Options"));
        }
    }

    CLI::App& Parent(std::string& name, const std::string& group) {
        const std::size_t blank = name.find(' ');
        if (blank == std::string::npos) {
            return app;
        }
        const std::string parent = name.substr(0, blank);
        name.erase(0, blank + 1);
        const auto known = std::find_if(levels.begin(), levels.end(),
                                        [&](const Level& level) { return level.app->get_name() == parent; });
        CLI::App* added = known == levels.end() ? nullptr : known->app;
        if (added == nullptr) {
            added = app.add_subcommand(parent, Text(L"Subcommands/" + text::FromUtf8(parent)));
            Prepare(*added);
            added->group(Text(L"Program/" + text::FromUtf8(group)));
            levels.push_back({added});
        }
        return *added;
    }

    /// Each word of the name is an operand; the last one may be repeated.
    static void AddOperands(CLI::App& level, const OperandSpec& spec, std::vector<CLI::Option*>& operands) {
        for (const std::string& word : spec.Words()) {
            operands.push_back(level.add_option(word)->expected(1)->type_name("")->group(""));
        }
        if (spec.most > operands.size()) {
            operands.back()
                ->expected(1, static_cast<int>(spec.most))
                ->allow_extra_args()
                ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
        }
    }

    /// Others need no options: to describe those of all subcommands takes longer than most commands.
    bool MayBeNamed(const SubcommandSpec& spec) const {
        const std::wstring name = text::FromUtf8(spec.name);
        const std::wstring firstWord = name.substr(0, name.find(L' '));
        return std::find(arguments.begin(), arguments.end(), firstWord) != arguments.end();
    }

    void AddSubcommand(const SubcommandSpec& spec) {
        std::string name = spec.name;
        CLI::App& parent = Parent(name, spec.group);
        CLI::App* const added = parent.add_subcommand(name, Text(L"Subcommands/" + spec.Key()));
        Prepare(*added, spec.operand);
        added->group(spec.IsHidden() ? std::string() : Text(L"Program/" + text::FromUtf8(spec.group)));
        Level level{added, &spec};
        if (MayBeNamed(spec)) {
            AddOptions(*added, spec.options);
            AddOperands(*added, spec.operand, level.operands);
        }
        levels.push_back(level);
    }

    /// The innermost level of the command line.
    Level Parsed() const {
        Level parsed;
        for (const Level& level : levels) {
            if (level.app->parsed()) {
                parsed = level.app->get_parent() == &app && parsed.app != nullptr ? parsed : level;
            }
        }
        return parsed;
    }

    std::vector<const CLI::App*> AllLevels() const {
        std::vector<const CLI::App*> all = {&app};
        for (const Level& level : levels) {
            all.push_back(level.app);
        }
        return all;
    }

    /// The option that a word names: "--limit" for "--limit=" and "-an".
    std::wstring OptionIn(const std::wstring& word) const {
        const std::string typed = text::ToUtf8(word.substr(0, word.find(L'=')));
        const std::string name = typed.starts_with("--") || typed.empty() ? typed : std::string("-") + typed.back();
        for (const CLI::App* const level : AllLevels()) {
            if (const CLI::Option* const option = level->get_option_no_throw(name)) {
                return text::FromUtf8(option->get_name());
            }
        }
        return word;
    }

    [[noreturn]] static void FailUnknown(const CLI::App& level, const std::string& unknown) {
        std::vector<std::string> names;
        for (const CLI::App* subcommand : level.get_subcommands([](const CLI::App*) { return true; })) {
            names.push_back(subcommand->get_name());
        }
        for (const CLI::Option* option : level.get_options()) {
            for (const std::string& name : option->get_lnames()) {
                names.push_back("--" + name);
            }
        }
        const std::string typed = unknown.substr(0, unknown.find('='));
        const std::string_view nearest = text::NearestName({names.begin(), names.end()}, typed);
        throw UsageProblem{nearest.empty() ? L"Usage/UnknownArgument" : L"Usage/DidYouMean", text::FromUtf8(unknown),
                           text::FromUtf8(nearest)};
    }

    void RefuseUnknown() const {
        for (const CLI::App* level : AllLevels()) {
            for (const std::string& unknown : level->remaining()) {
                FailUnknown(*level, unknown);
            }
        }
    }

    /// "start, stop, status"
    static std::wstring NamesBelow(const CLI::App& level) {
        std::wstring names;
        for (const CLI::App* below : level.get_subcommands([](const CLI::App*) { return true; })) {
            names += (names.empty() ? L"" : L", ") + text::FromUtf8(below->get_name());
        }
        return names;
    }

    static void TakeOptions(const CLI::App& level, const std::vector<const char*>& names, Command& command) {
        for (const char* const name : names) {
            if (const CLI::Option* const option = level.get_option(name); option->count() > 0) {
                OptionNamed(name).take(command, WideTexts(option->results()));
            }
        }
    }

    Values OperandsOf(const Level& level) const {
        Values values;
        for (const CLI::Option* const operand : level.operands) {
            const Values results = WideTexts(operand->results());
            values.insert(values.end(), results.begin(), results.end());
        }
        values.insert(values.end(), plainOperands.begin(), plainOperands.end());
        if (values.size() > level.spec->operand.most) {
            throw UsageProblem{L"Usage/UnknownArgument", values[level.spec->operand.most]};
        }
        return values;
    }

    void TakeOperands(const Level& level, Command& command) const {
        const OperandSpec& spec = level.spec->operand;
        const Values values = OperandsOf(level);
        if (!values.empty()) {
            spec.take(command, values);
        }
        if (level.spec->NeedsJobs()) {
            const bool areNamed =
                !command.ids.empty() || command.HasConditions() || command.kind == CommandKind::CancelAll;
            if (!areNamed) {
                throw UsageProblem{L"Usage/NoIds", {}};
            }
        } else if (values.size() < spec.least) {
            throw UsageProblem{L"Usage/OperandMissing", MissingOperands(spec, values.size())};
        }
    }

    /// "SCENARIO INPUT"
    static std::wstring MissingOperands(const OperandSpec& spec, std::size_t given) {
        const std::vector<std::string> words = spec.Words();
        std::wstring missing;
        for (std::size_t i = given; i < spec.least; ++i) {
            missing += (missing.empty() ? L"" : L" ") + text::FromUtf8(words[i]);
        }
        return missing;
    }

    Command CommandOf() const {
        Command command{.kind = CommandKind::Overview};
        TakeOptions(app, {"--json", "--color", "--client-only", "--log-file"}, command);
        const Level level = Parsed();
        if (app.get_option("--version")->count() > 0) {
            command.kind = CommandKind::Version;
        } else if (level.app != nullptr && level.spec == nullptr) {
            throw UsageProblem{L"Usage/OperandMissing", NamesBelow(*level.app)};
        } else if (level.spec != nullptr) {
            command.kind = level.spec->kind;
            TakeOptions(*level.app, level.spec->options, command);
            TakeOperands(level, command);
        }
        return command;
    }

    const Texts* texts;
    const std::vector<std::wstring>& arguments;
    CLI::App app;
    std::vector<Level> levels;
    /// The arguments after "--".
    Values plainOperands;
};

} // namespace

ParsedCommandLine ParseSubcommand(const Texts& texts, const std::vector<std::wstring>& arguments) {
    // To look up hundreds of texts takes longer than most commands.
    ParsedCommandLine line = Grammar(nullptr, arguments).Parse();
    return line.command.kind == CommandKind::Help ? Grammar(&texts, arguments).Parse() : line;
}

} // namespace front_end
