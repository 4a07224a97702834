#pragma once
// Attributes by key, as in the Get...Info_Value and Set...Info_Value functions: one row each.

#include "headless/functions/parameters.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <string>

namespace headless::functions {

template <class T>
struct Attribute {
    const char* key;
    double (*read)(const T&);
    void (*write)(T&, double); ///< null: read-only
};

/// Reports once that `function` was called with a key that this host does not know.
inline void report_unknown_key(Workstation& workstation, const std::string& function, const char* key) {
    workstation.report_once({function + ": the key \"" + (key ? key : "") + "\" is not known"});
}

/// The attributes that one pair of functions reads and writes.
template <class T>
struct Attributes {
    using Object = T;

    const char* reader; ///< the function's name
    const char* writer;
    std::span<const Attribute<T>> rows;

    /// Null for an unknown key, which is reported.
    const Attribute<T>* find(Workstation& workstation, const char* function, const char* key) const {
        for (const Attribute<T>& attribute : rows)
            if (key && std::strcmp(attribute.key, key) == 0)
                return &attribute;
        report_unknown_key(workstation, function, key);
        return nullptr;
    }
};

template <const auto& Table>
using ObjectOfTable = typename std::remove_cvref_t<decltype(Table)>::Object;

/// Returns 0 for an unknown key, which is reported.
template <const auto& Table>
double get_value(Workstation& workstation, const ObjectOfTable<Table>& object, const char* key) {
    const auto* attribute = Table.find(workstation, Table.reader, key);
    return attribute ? attribute->read(object) : 0.0;
}

/// Returns false and changes nothing if the key is unknown (which is reported) or read-only, and if the value
/// is not finite.
template <const auto& Table>
bool set_value(Workstation& workstation, ObjectOfTable<Table>& object, const char* key, double value) {
    const auto* attribute = Table.find(workstation, Table.writer, key);
    if (!attribute || !attribute->write || !std::isfinite(value))
        return false;
    attribute->write(object, value);
    return true;
}

/// A handle as a number, for functions that return numbers.
template <class Handle>
double address_of(Handle* handle) {
    return static_cast<double>(reinterpret_cast<std::uintptr_t>(handle));
}

/// Truncates towards zero and limits to the range of int.
inline int to_int(double value) {
    return static_cast<int>(std::clamp(value, static_cast<double>(std::numeric_limits<int>::min()),
                                       static_cast<double>(std::numeric_limits<int>::max())));
}

} // namespace headless::functions
