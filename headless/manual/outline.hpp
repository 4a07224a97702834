#pragma once
// What a command line takes, read from its parser: what the manual page and the completions are made of.

#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

namespace headless::manual {

/// What a shell offers for a value.
enum class Offer { nothing, choices, files, folders };

/// The word for a value in the help, such as "FILE.rpp", and what follows from it.
struct Value {
    std::string word; ///< empty for an option without a value
    Offer offer = Offer::nothing;
    std::vector<std::string> choices;
    std::string extension; ///< that the files have, with its dot; empty for any file
};

/// An option with its names, or an argument, which has none.
struct Parameter {
    std::vector<std::string> short_names; ///< with their hyphen
    std::vector<std::string> long_names;  ///< with both
    Value value;
    std::string help;
    bool is_required = false;
    bool repeats = false;
};

struct Command {
    std::string name;
    std::string help;
    std::vector<Parameter> options;
    std::vector<Parameter> arguments;
    std::vector<Command> subcommands;
};

/// Describes the parser with all that has been added to it.
Command outline_of(const CLI::App& app);

/// "a|b" and "0..4" are choices; words for folders, files and files of one kind ("OUT.rpp") are told apart.
Value value_of(const std::string& word);

/// All names of an option, short ones first.
std::vector<std::string> names_of(const Parameter& option);

} // namespace headless::manual
