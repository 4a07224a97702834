#include "headless/manual/outline.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <string_view>

namespace headless::manual {
namespace {

constexpr std::array<std::string_view, 3> folders{"FOLDER", "SUBJECT", "BASE"};
constexpr std::array<std::string_view, 3> free_texts{"NAME", "S", "TITLE=ANSWER"};

bool contains(const auto& words, const std::string& word) {
    return std::ranges::find(words, word) != words.end();
}

/// "0..4" is the numbers from 0 to 4; empty for any other word.
std::vector<std::string> numbers(const std::string& word) {
    std::vector<std::string> choices;
    if (word.size() == 4 && word.substr(1, 2) == "..")
        for (char digit = word.front(); digit <= word.back(); ++digit)
            choices.emplace_back(1, digit);
    return choices;
}

Parameter parameter_of(const CLI::Option& option) {
    Parameter parameter;
    for (const std::string& name : option.get_snames())
        parameter.short_names.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        parameter.long_names.push_back("--" + name);
    if (option.get_items_expected_max() > 0)
        parameter.value = value_of(option.get_type_name());
    parameter.help = option.get_description();
    parameter.is_required = option.get_required();
    parameter.repeats = option.get_items_expected_max() > 1 ||
                        option.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
    return parameter;
}

} // namespace

Value value_of(const std::string& word) {
    if (const auto choices = numbers(word); !choices.empty())
        return {word, Offer::choices, choices, ""};
    if (word.find('|') != std::string::npos)
        return {word, Offer::choices, CLI::detail::split(word, '|'), ""};
    if (contains(folders, word))
        return {word, Offer::folders, {}, ""};
    if (contains(free_texts, word))
        return {word, Offer::nothing, {}, ""};
    const std::size_t dot = word.rfind('.');
    return {word, Offer::files, {}, dot == std::string::npos ? "" : word.substr(dot)};
}

std::vector<std::string> names_of(const Parameter& option) {
    std::vector<std::string> names = option.short_names;
    names.insert(names.end(), option.long_names.begin(), option.long_names.end());
    return names;
}

Command outline_of(const CLI::App& app) {
    Command command{app.get_name(), app.get_description(), {}, {}, {}};
    for (const CLI::Option* option : app.get_options())
        (option->get_positional() ? command.arguments : command.options).push_back(parameter_of(*option));
    for (const CLI::App* subcommand : app.get_subcommands([](const CLI::App*) { return true; }))
        command.subcommands.push_back(outline_of(*subcommand));
    return command;
}

} // namespace headless::manual
