#include "headless/script/reference.hpp"

#include "headless/script/definition.hpp"

namespace headless {
namespace {

constexpr std::string_view help_mark = "[MK:API]"; // for the workstation's own list

std::string type_word(ValueKind kind, std::string_view type) {
    switch (kind) {
    case ValueKind::integer:
        return "integer";
    case ValueKind::boolean:
        return "boolean";
    case ValueKind::number:
        return "number";
    case ValueKind::text:
        return "string";
    case ValueKind::array:
        return "reaper.array";
    default:
        break;
    }
    if (type == "void*") {
        return "identifier";
    }
    return std::string(type.substr(0, type.find('*')));
}

void append(std::string& list, const std::string& entry) { list += (list.empty() ? "" : ", ") + entry; }

std::string results_of(const Definition& definition) {
    std::string results;
    if (definition.result != ValueKind::nothing) {
        append(results, type_word(definition.result, definition.result_type));
    }
    for (const Parameter& parameter : definition.parameters) {
        if (parameter.is_result()) {
            append(results, type_word(parameter.kind, parameter.type) + ' ' + std::string(parameter.name));
        }
    }
    return results;
}

std::string arguments_of(const Definition& definition) {
    std::string arguments;
    for (const Parameter& parameter : definition.parameters) {
        if (parameter.is_argument()) {
            append(arguments, (parameter.is_optional ? "optional " : "") +
                                  type_word(parameter.kind, parameter.type) + ' ' +
                                  std::string(parameter.name));
        }
    }
    return arguments;
}

std::string call_of(const ScriptFunction& function, const Definition& definition) {
    const std::string results = results_of(definition);
    return (results.empty() ? "" : results + " = ") + "reaper." + function.name + '(' +
           arguments_of(definition) + ')';
}

std::string help_of(const Definition& definition) {
    std::string_view help = definition.help;
    if (help.starts_with(help_mark)) {
        help.remove_prefix(help_mark.size());
    }
    return std::string(help);
}

} // namespace

std::string api_reference(const std::vector<ScriptFunction>& functions, ReferenceForm form) {
    std::string text = form == ReferenceForm::markdown ? "# Functions for scripts\n\n" : "";
    for (const ScriptFunction& function : functions) {
        const Definition definition = parse_definition(function.definition);
        const std::string call = call_of(function, definition);
        const std::string help = help_of(definition);
        if (form == ReferenceForm::markdown) {
            text.append("## ").append(function.name).append("\n\n    ").append(call);
            text.append("\n\n").append(help).append("\n\n");
        } else {
            text.append(call).append("\n    ").append(help).append("\n");
        }
    }
    return text;
}

} // namespace headless
