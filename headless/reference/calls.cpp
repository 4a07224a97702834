#include "headless/reference/calls.hpp"

namespace headless::reference {
namespace {

std::string without_ending(std::string_view text, std::string_view ending) {
    return std::string(text.ends_with(ending) ? text.substr(0, text.size() - ending.size()) : text);
}

std::string lua_object(std::string_view type) {
    if (type == "void*")
        return "identifier";
    if (type == "object*")
        return "any";
    if (type.ends_with("Array*"))
        return without_ending(type, "Array*") + "[]";
    return without_ending(type, "*");
}

} // namespace

std::string join(const std::vector<std::string>& parts, std::string_view separator) {
    std::string text;
    for (const std::string& part : parts)
        text.append(text.empty() ? "" : separator).append(part);
    return text;
}

std::vector<std::string>
describe_parameters(const script::ParsedDefinition& definition, bool (script::Parameter::*chosen)() const,
                    const std::function<std::string(const script::Parameter&)>& describe) {
    std::vector<std::string> descriptions;
    for (const script::Parameter& parameter : definition.parameters)
        if ((parameter.*chosen)())
            descriptions.push_back(describe(parameter));
    return descriptions;
}

std::string lua_type_name(script::ValueKind kind, std::string_view type) {
    switch (kind) {
    case script::ValueKind::integer:
        return "integer";
    case script::ValueKind::boolean:
        return "boolean";
    case script::ValueKind::number:
        return "number";
    case script::ValueKind::text:
        return "string";
    case script::ValueKind::array:
        return "reaper.array";
    default:
        return lua_object(type);
    }
}

namespace {

std::string call_in(std::string_view table, const CatalogueEntry& function) {
    const script::ParsedDefinition& definition = function.definition;
    const auto typed_name = [](const script::Parameter& parameter) {
        return lua_type_name(parameter.kind, parameter.type) + ' ' + std::string(parameter.name);
    };
    auto results = describe_parameters(definition, &script::Parameter::is_result, typed_name);
    if (definition.result != script::ValueKind::nothing)
        results.insert(results.begin(), lua_type_name(definition.result, definition.result_type));
    const auto arguments = describe_parameters(
        definition, &script::Parameter::is_argument, [&](const script::Parameter& parameter) {
            return (parameter.is_optional ? "optional " : "") + typed_name(parameter);
        });
    return join(results, ", ") + (results.empty() ? "" : " = ") + std::string(table) + '.' + function.name +
           '(' + join(arguments, ", ") + ')';
}

} // namespace

std::string lua_call(const CatalogueEntry& function) { return call_in("reaper", function); }
std::string method_call(const CatalogueEntry& method) { return call_in("array", method); }

std::string c_prototype(const CatalogueEntry& function) {
    std::vector<std::string> parameters;
    for (const script::Parameter& parameter : function.definition.parameters)
        parameters.push_back(std::string(parameter.type) + ' ' + std::string(parameter.written_name));
    return std::string(function.definition.result_type) + ' ' + function.name + '(' + join(parameters, ", ") +
           ')';
}

std::string field_list(const CatalogueEntry& record) {
    std::vector<std::string> fields;
    for (const script::Parameter& field : record.definition.parameters)
        fields.push_back(std::string(field.name) + " (" + lua_type_name(field.kind, field.type) + ')');
    return join(fields, ", ");
}

std::string help_of(const script::ParsedDefinition& definition) {
    constexpr std::string_view mark = "[MK:API]";
    std::string_view help = definition.help;
    if (help.starts_with(mark))
        help.remove_prefix(mark.size());
    return std::string(help);
}

} // namespace headless::reference
