// The reference as Python signatures.

#include "headless/reference/calls.hpp"
#include "headless/reference/forms.hpp"

#include <algorithm>
#include <array>

namespace headless::reference {
namespace {

struct TypeNames {
    std::string_view type;
    std::string_view for_ctypes;
    std::string_view for_python; ///< as the package's workstation takes and gives it
};

constexpr auto type_names = std::to_array<TypeNames>({
    {"void", "None", "None"},
    {"int", "c_int", "int"},
    {"int*", "POINTER(c_int)", "int"},
    {"bool", "c_bool", "bool"},
    {"bool*", "POINTER(c_bool)", "bool"},
    {"double", "c_double", "float"},
    {"double*", "POINTER(c_double)", "float"},
    {"char*", "POINTER(c_char)", "str"},
    {"const char*", "c_char_p", "str"},
    {"const char**", "POINTER(c_char_p)", "str"},
    {"unsigned long long", "c_ulonglong", "int"},
    {"unsigned long long*", "POINTER(c_ulonglong)", "int"},
    {"void*", "c_void_p", "Handle"},
#define HANDLE_TYPE(type, python_class) {#type "*", "c_void_p", #python_class},
#include "common/handle_types.inc"
#undef HANDLE_TYPE
});

std::string name_of(std::string_view name) {
    static constexpr auto keywords = std::to_array<std::string_view>(
        {"False", "None",     "True",  "and",    "as",   "assert", "async",  "await",    "break",
         "class", "continue", "def",   "del",    "elif", "else",   "except", "finally",  "for",
         "from",  "global",   "if",    "import", "in",   "is",     "lambda", "nonlocal", "not",
         "or",    "pass",     "raise", "return", "try",  "while",  "with",   "yield"});
    return std::string(name) + (std::ranges::find(keywords, name) != keywords.end() ? "_" : "");
}

const TypeNames* find_type(std::string_view type) {
    const auto* found = std::ranges::find(type_names, type, &TypeNames::type);
    return found == type_names.end() ? nullptr : found;
}

/// "EditedEnvelope, Envelope, Handle, ...", in the order of the alphabet.
std::string handle_classes() {
    std::vector<std::string> classes{
        "Handle",
#define HANDLE_TYPE(type, python_class) #python_class,
#include "common/handle_types.inc"
#undef HANDLE_TYPE
    };
    std::ranges::sort(classes);
    return join(classes, ", ");
}

std::string python_type(const script::Parameter& parameter) {
    return parameter.kind == script::ValueKind::array ? "array"
                                                      : std::string(find_type(parameter.type)->for_python);
}

bool is_known(const CatalogueEntry& function) {
    return find_type(function.definition.result_type) &&
           std::ranges::all_of(function.definition.parameters, [](const script::Parameter& parameter) {
               return find_type(parameter.type) != nullptr;
           });
}

std::string result_of(const script::ParsedDefinition& definition) {
    auto results = describe_parameters(definition, &script::Parameter::is_result, python_type);
    if (definition.result != script::ValueKind::nothing) {
        const bool may_be_none =
            definition.result == script::ValueKind::handle || definition.result == script::ValueKind::text;
        results.insert(results.begin(), std::string(find_type(definition.result_type)->for_python) +
                                            (may_be_none ? " | None" : ""));
    }
    return results.empty() ? "None" : results.size() == 1 ? results[0] : "tuple[" + join(results, ", ") + ']';
}

std::string docstring(const script::ParsedDefinition& definition) {
    std::string text;
    for (const char letter : help_of(definition))
        text += letter == '\\' || letter == '"' ? std::string("\\") + letter : std::string(1, letter);
    return "\"\"\"" + text + "\"\"\"\n";
}

std::string method(const CatalogueEntry& function) {
    auto parameters = describe_parameters(function.definition, &script::Parameter::is_argument,
                                          [](const script::Parameter& parameter) {
                                              return name_of(parameter.name) + ": " + python_type(parameter) +
                                                     (parameter.is_optional    ? " | None = None"
                                                      : parameter.is_project() ? " | None"
                                                                               : "");
                                          });
    parameters.insert(parameters.begin(), "self");
    return "\n    def " + function.name + '(' + join(parameters, ", ") + ") -> " +
           result_of(function.definition) + ":\n        " + docstring(function.definition);
}

std::string exported_function(const CatalogueEntry& function) {
    std::vector<std::string> parameters;
    for (const script::Parameter& parameter : function.definition.parameters) {
        parameters.push_back(name_of(parameter.written_name) + ": " +
                             std::string(find_type(parameter.type)->for_ctypes));
    }
    return "\n\ndef " + function.name + '(' + join(parameters, ", ") + ") -> " +
           std::string(find_type(function.definition.result_type)->for_ctypes) + ":\n    " +
           docstring(function.definition);
}

} // namespace

std::string python_form(const Catalogue& catalogue) {
    std::string text = R"("""What Python scripts may call: signatures alone."""

from __future__ import annotations

from array import array
from ctypes import POINTER, c_bool, c_char, c_char_p, c_double, c_int, c_ulonglong, c_void_p

from meridek_felspar.handles import )" +
                       handle_classes() + "\n\n# Exported by the library, for ctypes.\n";
    for (const CatalogueEntry& function : catalogue.python)
        if (is_known(function))
            text += exported_function(function);
    text += "\n\nclass Workstation:\n    \"\"\"What meridek_felspar.headless.open gives.\"\"\"\n";
    for (const auto* functions : {&catalogue.registered, &catalogue.workstation}) {
        for (const CatalogueEntry& function : *functions)
            if (is_known(function))
                text += method(function);
    }
    return text;
}

} // namespace headless::reference
