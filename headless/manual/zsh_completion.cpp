#include "headless/manual/forms.hpp"
#include "headless/manual/text.hpp"

namespace headless::manual {
namespace {

/// Inside single quotes: a quote ends them, is written by itself, and begins them again.
std::string quoted(std::string_view text) {
    std::string shell = "'";
    for (const char letter : text)
        shell += letter == '\'' ? "'\\''" : std::string(1, letter);
    return shell + "'";
}

/// A value's name and what is offered for it, as _arguments takes them.
std::string action(const Value& value) {
    std::string text = ":" + with_backslashes(value.word, ":\\") + ":";
    switch (value.offer) {
    case Offer::choices:
        return text + "(" + join(value.choices, " ") + ")";
    case Offer::files:
        return text + (value.extension.empty() ? "_files" : "_files -g \"*" + value.extension + "\"");
    case Offer::folders:
        return text + "_files -/";
    case Offer::nothing:
        break;
    }
    return text + " ";
}

/// Each name of an option is a word of its own. Names of the same option exclude one another.
std::string option_words(const Parameter& option, std::string_view indent) {
    const auto names = names_of(option);
    std::string others = option.repeats ? "*" : "";
    if (!option.repeats && names.size() > 1)
        others.append("(").append(join(names, " ")).append(")");
    const std::string help = "[" + with_backslashes(option.help, "[]:\\") + "]";
    const bool takes_value = !option.value.word.empty();
    const std::string value = takes_value ? action(option.value) : "";
    std::string words;
    for (const std::string& name : names) {
        std::string word = others;
        word.append(name)
            .append(!takes_value             ? ""
                    : name.starts_with("--") ? "="
                                             : "+")
            .append(help)
            .append(value);
        words.append(" \\\n").append(indent).append(quoted(word));
    }
    return words;
}

std::string argument_word(const Parameter& argument, std::size_t place) {
    return quoted((argument.repeats ? "*" : std::to_string(place)) + action(argument.value));
}

std::string options(const Command& command, std::string_view indent) {
    std::string words;
    for (const Parameter& option : command.options)
        words += option_words(option, indent);
    return words;
}

std::string subcommand_case(const Command& command) {
    std::string text = "                " + command.name + ")\n                    _arguments";
    text += options(command, "                        ");
    for (std::size_t i = 0; i < command.arguments.size(); ++i)
        text += " \\\n                        " + argument_word(command.arguments[i], i + 1);
    return text + "\n                    ;;\n";
}

} // namespace

std::string zsh_completion(const Command& command) {
    std::string script = "#compdef " + command.name + R"(

_felspar() {
    local context state state_descr line
    typeset -A opt_args
    _arguments -C)";
    script += options(command, "        ");
    script += " \\\n        '1:command:->command' '*::argument:->argument' && return\n";
    script += "    case $state in\n        command)\n            local -a commands=(\n";
    for (const Command& subcommand : command.subcommands)
        script += "                " +
                  quoted(subcommand.name + ":" + with_backslashes(subcommand.help, ":\\")) + "\n";
    script += "            )\n            _describe command commands\n            ;;\n";
    script += "        argument)\n            case $words[1] in\n";
    for (const Command& subcommand : command.subcommands)
        script += subcommand_case(subcommand);
    // An autoloaded file is the function's first call; a file that is read only declares it.
    return script + R"(            esac
            ;;
    esac
}

if [ "$funcstack[1]" = _felspar ]; then
    _felspar "$@"
else
    compdef _felspar felspar
fi
)";
}

} // namespace headless::manual
