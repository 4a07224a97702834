#include "headless/manual/forms.hpp"
#include "headless/manual/text.hpp"

namespace headless::manual {
namespace {

/// roff takes a plain hyphen for a break between words, and a backslash for an escape.
std::string roff(std::string_view text) {
    std::string escaped;
    for (const char letter : text)
        escaped += letter == '\\' ? "\\e" : letter == '-' ? "\\-" : std::string(1, letter);
    return escaped;
}

std::string bold(std::string_view text) { return "\\fB" + roff(text) + "\\fR"; }

std::string italic(std::string_view text) { return "\\fI" + roff(text) + "\\fR"; }

std::string argument_text(const Parameter& argument) {
    const std::string word = italic(argument.value.word) + (argument.repeats ? "..." : "");
    return argument.is_required ? word : "[" + word + "]";
}

std::string usage(const std::string& program, const Command& command) {
    std::string line = bold(program + " " + command.name) + " [\\fIoption\\fR]...";
    for (const Parameter& argument : command.arguments)
        line += " " + argument_text(argument);
    return line + "\n";
}

std::string parameter_text(const Parameter& parameter) {
    std::string head;
    for (const std::string& name : names_of(parameter))
        head.append(head.empty() ? "" : ", ").append(bold(name));
    if (!parameter.value.word.empty())
        head.append(head.empty() ? "" : " ").append(italic(parameter.value.word));
    return ".TP\n" + head + "\n" + roff(parameter.help) + ".\n";
}

std::string parameters_text(const Command& command) {
    std::string text;
    for (const auto* parameters : {&command.arguments, &command.options})
        for (const Parameter& parameter : *parameters)
            text += parameter_text(parameter);
    return text;
}

constexpr std::string_view description =
    R"(The commands lay out localised dialogue, ride the volume of speech, and run
scripts of the workstation without its window.
They write project files that the workstation opens.
A project is written last and in one step: whatever stops a command, an
existing project stays as it was, with everything it plays.
)";

constexpr std::string_view tail = R"(.SH EXIT STATUS
.TP
.B 0
All was done.
.TP
.B 1
A file was refused or kept, something could not be written, or a check found something.
.TP
.B 2
The arguments are wrong.
.TP
.B 128+n
Signal n ended the command.
.SH EXAMPLES
.TP
.B felspar import fr en \-\-match \-\-ride \-o scene.rpp
Lay out the lines in fr beside those in en, with their volume evened out and
their loudness matched.
.TP
.B felspar ride *.wav \-o ridden
Render recordings with their volume evened out.
.TP
.B felspar run script.lua \-\-project scene.rpp \-\-save new.rpp
Run a script on a project.
.TP
.B felspar project *.rpp \-\-check
List the media files that projects miss.
)";

} // namespace

std::string manual_page(const Command& command, const std::string& version) {
    std::string page = ".TH FELSPAR 1 \"\" \"" + command.name + " " + version + "\" \"User Commands\"\n";
    page += ".SH NAME\n" + command.name + " \\- a small audio workstation without a screen, for dialogue\n";
    page += ".SH SYNOPSIS\n.nf\n";
    for (const Command& subcommand : command.subcommands)
        page += usage(command.name, subcommand);
    page += bold(command.name) + " " + bold("--help") + " | " + bold("--version") + "\n.fi\n";
    page.append(".SH DESCRIPTION\n").append(description).append(".SH OPTIONS\n");
    page += parameters_text(command);
    for (const Command& subcommand : command.subcommands) {
        page += ".SH " + roff(command.name + " " + subcommand.name) + "\n" + roff(subcommand.help) + ".\n";
        page += parameters_text(subcommand);
    }
    return page.append(tail);
}

} // namespace headless::manual
