#pragma once
// Texts by key, as in the GetSet...Info_String functions: one row each. Every table knows "P_EXT:key", what
// scripts keep with an object.

#include "headless/functions/attributes.hpp"
#include "headless/rpp/texts.hpp"
#include "headless/workstation/text.hpp"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace headless::functions {

template <class T>
struct TextAttribute {
    const char* key;
    std::string (*read)(T&);
    bool (*write)(T&, const std::string&); ///< returns false for a text that is refused; null: read-only
};

/// The texts that one function reads and writes.
template <class T>
struct TextAttributes {
    using Object = T;

    const char* function; ///< its name
    std::span<const TextAttribute<T>> rows;

    const TextAttribute<T>* find(std::string_view key) const {
        for (const TextAttribute<T>& attribute : rows)
            if (attribute.key == key)
                return &attribute;
        return nullptr;
    }
};

/// The identifier as a text; an object that has none gets one.
template <class T>
std::string id_text(T& object, project::Project& project) {
    if (!object.id)
        object.id = project.guids.next();
    return chunk::text_of(object.id);
}

inline constexpr std::string_view script_text_prefix = "P_EXT:";

/// Empty for a key that does not exist, which is reported, and for a text of scripts that does not exist.
template <const auto& Table>
std::optional<std::string> read_text(Workstation& workstation, ObjectOfTable<Table>& object,
                                     std::string_view key) {
    if (key.starts_with(script_text_prefix))
        return rpp::script_text(object, key.substr(script_text_prefix.size()));
    if (const auto* attribute = Table.find(key))
        return attribute->read(object);
    report_unknown_key(workstation, Table.function, std::string(key).c_str());
    return std::nullopt;
}

template <const auto& Table>
bool write_text(Workstation& workstation, ObjectOfTable<Table>& object, std::string_view key,
                const std::string& text) {
    if (key.starts_with(script_text_prefix)) {
        const bool is_set = rpp::set_script_text(object, key.substr(script_text_prefix.size()), text);
        if (!is_set)
            workstation.report_once({std::string(Table.function) + ": \"" + std::string(key) +
                                     "\" cannot hold a text with line breaks or all three kinds of quote"});
        return is_set;
    }
    const auto* attribute = Table.find(key);
    if (!attribute)
        report_unknown_key(workstation, Table.function, std::string(key).c_str());
    return attribute && attribute->write && attribute->write(object, text);
}

/// Gets or sets a text of the object. The buffer has `size` bytes; what does not fit is cut off.
template <const auto& Table>
bool get_set_sized_text(Workstation& workstation, ObjectOfTable<Table>& object, const char* key, char* text,
                        int size, bool is_set) {
    if (!key || !text)
        return false;
    if (is_set)
        return write_text<Table>(workstation, object, key, text);
    const auto found = read_text<Table>(workstation, object, key);
    workstation::copy_text(found.value_or(""), text, size);
    return found.has_value();
}

/// As get_set_sized_text, for callers that do not say how large their buffer is.
template <const auto& Table>
bool get_set_text(Workstation& workstation, ObjectOfTable<Table>& object, const char* key, char* text,
                  bool is_set) {
    return get_set_sized_text<Table>(workstation, object, key, text, workstation::unsized_buffer_bytes,
                                     is_set);
}

} // namespace headless::functions
