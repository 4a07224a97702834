#include "headless/manual/forms.hpp"
#include "headless/manual/text.hpp"

namespace headless::manual {
namespace {

std::string quoted(std::string_view text) { return "'" + with_backslashes(text, "'\\") + "'"; }

/// Switches that offer a value. -x takes no other files.
std::string offer(const Value& value) {
    switch (value.offer) {
    case Offer::choices:
        return "-x -a " + quoted(join(value.choices, " "));
    case Offer::files:
        return value.extension.empty() ? "-r -F" : "-x -a '(__fish_complete_suffix " + value.extension + ")'";
    case Offer::folders:
        return "-x -a '(__fish_complete_directories)'";
    case Offer::nothing:
        break;
    }
    return "-x";
}

std::string option_line(const std::string& start, const Parameter& option) {
    std::string line = start;
    for (const std::string& name : option.short_names)
        line += " -s " + name.substr(1);
    for (const std::string& name : option.long_names)
        line += " -l " + name.substr(2);
    if (!option.value.word.empty())
        line += " " + offer(option.value);
    return line + " -d " + quoted(option.help) + "\n";
}

/// All arguments are offered in one way: a shell that counted them would have to know which words are values.
std::string argument_line(const std::string& start, const Value& value) {
    const std::string files = "-F";
    return start + " " + (value.offer == Offer::files && value.extension.empty() ? files : offer(value)) +
           "\n";
}

} // namespace

std::string fish_completion(const Command& command) {
    const std::string start = "complete -c " + command.name;
    std::string script = "# fish completion for " + command.name + "\n" + start + " -f\n";
    const std::string first = start + " -n __fish_use_subcommand";
    for (const Parameter& option : command.options)
        script += option_line(first, option);
    for (const Command& subcommand : command.subcommands) {
        script += first + " -a " + subcommand.name + " -d " + quoted(subcommand.help) + "\n";
        const std::string later = start + " -n '__fish_seen_subcommand_from " + subcommand.name + "'";
        for (const Parameter& option : subcommand.options)
            script += option_line(later, option);
        for (const Parameter& argument : subcommand.arguments)
            script += argument_line(later, argument.value);
    }
    return script;
}

} // namespace headless::manual
