#pragma once
// Attributes by key, as in the Get...Info_Value and Set...Info_Value functions: one row each.

#include "headless/workstation/workstation.hpp"

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

template <class T>
const Attribute<T>* find_attribute(std::span<const Attribute<T>> attributes, const char* key) {
    for (const Attribute<T>& attribute : attributes)
        if (key && std::strcmp(attribute.key, key) == 0)
            return &attribute;
    return nullptr;
}

/// Reports once that `function` was called with a key that this host does not know.
inline void report_unknown_key(workstation::Workstation& workstation, const std::string& function,
                               const char* key) {
    workstation.report_once({function + ": the key \"" + (key ? key : "") + "\" is not known"});
}

/// The attributes that one pair of functions reads and writes.
template <class T>
struct Attributes {
    const char* reader; ///< the function's name
    const char* writer;
    std::span<const Attribute<T>> rows;
};

/// Returns 0 if there is no object, and for an unknown key, which is reported.
template <class T>
double read_attribute(workstation::Workstation& workstation, const Attributes<T>& attributes, const T* object,
                      const char* key) {
    const Attribute<T>* attribute = find_attribute(attributes.rows, key);
    if (object && !attribute)
        report_unknown_key(workstation, attributes.reader, key);
    return object && attribute ? attribute->read(*object) : 0.0;
}

/// Returns false and changes nothing if there is no object, if the key is unknown (which is reported) or
/// read-only, and if the value is not finite.
template <class T>
bool write_attribute(workstation::Workstation& workstation, const Attributes<T>& attributes, T* object,
                     const char* key, double value) {
    const Attribute<T>* attribute = find_attribute(attributes.rows, key);
    if (object && !attribute)
        report_unknown_key(workstation, attributes.writer, key);
    if (!object || !attribute || !attribute->write || !std::isfinite(value))
        return false;
    attribute->write(*object, value);
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
