// Only what bash 3.2 has, which is macOS's.

#include "headless/manual/forms.hpp"
#include "headless/manual/text.hpp"

namespace headless::manual {
namespace {

constexpr std::string_view helpers = R"(
_felspar_offer() {
    local line
    while IFS= read -r line; do COMPREPLY+=("$line"); done < <(compgen "$@" -- "$word")
}
_felspar_names() {
    compopt -o filenames 2>/dev/null # a folder ends in a slash; bash 3.2 has no compopt
    _felspar_offer "$@"
}
_felspar_files() {
    _felspar_names -f -X "!*$1"
    _felspar_offer -d
}
_felspar() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]}
    COMPREPLY=()
    if [ "$word" = = ]; then
        word=
    elif [ "$before" = = ]; then
        before=${COMP_WORDS[COMP_CWORD-2]}
    fi
    [ "$COMP_CWORD" -gt 1 ] || command=
    case $command:$before in
)";

constexpr std::string_view end = R"(    esac
}
complete -F _felspar felspar
)";

/// The shell command that offers a value.
std::string offer(const Value& value) {
    switch (value.offer) {
    case Offer::choices:
        return "_felspar_offer -W '" + join(value.choices, " ") + "'";
    case Offer::files:
        return value.extension.empty() ? "_felspar_names -f" : "_felspar_files " + value.extension;
    case Offer::folders:
        return "_felspar_names -d";
    case Offer::nothing:
        break;
    }
    return ":";
}

std::string values_of_options(const Command& command) {
    std::string cases;
    for (const Parameter& option : command.options) {
        if (option.value.word.empty())
            continue;
        std::string patterns;
        for (const std::string& name : names_of(option))
            patterns.append(patterns.empty() ? "" : " | ").append(command.name + ":" + name);
        cases += "        " + patterns + ") " + offer(option.value) + "; return ;;\n";
    }
    return cases;
}

std::string option_names(const Command& command) {
    std::vector<std::string> names;
    for (const Parameter& option : command.options)
        for (const std::string& name : names_of(option))
            names.push_back(name);
    return "_felspar_offer -W '" + join(names, " ") + "'";
}

/// The first argument follows the command's name; what comes later is offered as the last.
std::string arguments(const Command& command) {
    if (command.arguments.empty())
        return "";
    return "        " + command.name + ":" + command.name + ":*) " + offer(command.arguments.front().value) +
           " ;;\n        " + command.name + ":*) " + offer(command.arguments.back().value) + " ;;\n";
}

} // namespace

std::string bash_completion(const Command& command) {
    std::string script = "# bash completion for " + command.name + "\n";
    script.append(helpers);
    for (const Command& subcommand : command.subcommands)
        script += values_of_options(subcommand);
    script += "    esac\n    case $command:$before:$word in\n";
    std::vector<std::string> names;
    for (const Command& subcommand : command.subcommands)
        names.push_back(subcommand.name);
    script += "        :*:-*) " + option_names(command) + " ;;\n";
    script += "        :*) _felspar_offer -W '" + join(names, " ") + "' ;;\n";
    for (const Command& subcommand : command.subcommands)
        script += "        " + subcommand.name + ":*:-*) " + option_names(subcommand) + " ;;\n" +
                  arguments(subcommand);
    return script.append(end);
}

} // namespace headless::manual
