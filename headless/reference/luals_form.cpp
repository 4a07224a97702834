// Definitions for the Lua language server (LuaLS), in its annotation comments.

#include "headless/reference/calls.hpp"
#include "headless/reference/forms.hpp"

#include <algorithm>
#include <array>
#include <set>

namespace headless::reference {
namespace {

std::string lua_name(std::string_view name) {
    static constexpr auto keywords = std::to_array<std::string_view>(
        {"and", "break", "do",  "else", "elseif", "end",    "false",  "for",  "function", "goto",  "if",
         "in",  "local", "nil", "not",  "or",     "repeat", "return", "then", "true",     "until", "while"});
    return std::string(name) + (std::ranges::find(keywords, name) != keywords.end() ? "_" : "");
}

/// Whether scripts may omit the argument or pass nil.
bool may_be_nil(const script::Parameter& parameter) {
    return parameter.is_optional || parameter.is_project();
}

std::string argument_type(const script::Parameter& parameter) {
    const std::string type = lua_type_name(parameter.kind, parameter.type);
    return parameter.is_project() ? type + "|0" : type; // 0 is the active project
}

std::string result_type(script::ValueKind kind, std::string_view type) {
    return lua_type_name(kind, type) + (kind == script::ValueKind::handle ? "|nil" : "");
}

void append_function(std::string& text, const CatalogueEntry& function, std::string_view table = "reaper.") {
    const script::ParsedDefinition& definition = function.definition;
    text += "\n---" + help_of(definition) + '\n';
    for (const script::Parameter& parameter : definition.parameters) {
        if (parameter.is_argument()) {
            text += "---@param " + lua_name(parameter.name) + (may_be_nil(parameter) ? "? " : " ") +
                    argument_type(parameter) + '\n';
        }
    }
    if (definition.result != script::ValueKind::nothing)
        text += "---@return " + result_type(definition.result, definition.result_type) + '\n';
    for (const script::Parameter& parameter : definition.parameters) {
        if (parameter.is_result()) {
            text += "---@return " + result_type(parameter.kind, parameter.type) + ' ' +
                    lua_name(parameter.name) + '\n';
        }
    }
    const auto names =
        describe_parameters(definition, &script::Parameter::is_argument,
                            [](const script::Parameter& parameter) { return lua_name(parameter.name); });
    text += "function " + std::string(table) + function.name + '(' + join(names, ", ") + ") end\n";
}

/// The workstation's objects, which are opaque to scripts.
std::set<std::string> handle_types(const Catalogue& catalogue) {
    std::set<std::string> types{"identifier"};
    for (const auto* functions : {&catalogue.registered, &catalogue.workstation}) {
        for (const CatalogueEntry& function : *functions) {
            if (function.definition.result == script::ValueKind::handle)
                types.insert(lua_type_name(script::ValueKind::handle, function.definition.result_type));
            for (const script::Parameter& parameter : function.definition.parameters)
                if (parameter.kind == script::ValueKind::handle)
                    types.insert(lua_type_name(script::ValueKind::handle, parameter.type));
        }
    }
    return types;
}

void append_types(std::string& text, const Catalogue& catalogue) {
    for (const std::string& type : handle_types(catalogue))
        text += "---@class " + type + (type == "identifier" ? " : userdata\n" : " : identifier\n");
    for (const CatalogueEntry& record : catalogue.records) {
        text += "\n---" + help_of(record.definition) + "\n---@class " + record.name + '\n';
        for (const script::Parameter& field : record.definition.parameters)
            text +=
                "---@field " + std::string(field.name) + "? " + lua_type_name(field.kind, field.type) + '\n';
    }
}

} // namespace

std::string luals_form(const Catalogue& catalogue) {
    std::string text = "---@meta reaper_MERIDEK_FELSPAR\n-- MERIDEK_FELSPAR " + catalogue.version + "\n\n";
    append_types(text, catalogue);
    text += "\n---@class reaper.array\n---@field [integer] number\nlocal array = {}\n";
    for (const CatalogueEntry& method : catalogue.arrays)
        append_function(text, method, "array:");
    text += "\n---@class reaper\nreaper = {}\n";
    for (const auto* functions :
         {&catalogue.workstation, &catalogue.scripting, &catalogue.registered, &catalogue.lua}) {
        for (const CatalogueEntry& function : *functions)
            if (functions == &catalogue.lua || !catalogue.is_of_lua_module(function.name))
                append_function(text, function);
    }
    text += "\n---The functions of the module alone.\nMK_FELSPAR = {\n";
    for (const CatalogueEntry& function : catalogue.lua)
        text += "    " + function.name + " = reaper." + function.name + ",\n";
    return text + "}\n\nreturn reaper\n";
}

} // namespace headless::reference
