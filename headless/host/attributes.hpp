#pragma once
// Attributes by key, as the Get...Info_Value and Set...Info_Value functions name them: one row each.

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <span>

namespace headless {

template <class T>
struct Attribute {
    const char* key;
    double (*read)(const T&);
    void (*write)(T&, double); ///< null: cannot be set
};

template <class T>
const Attribute<T>* find_attribute(std::span<const Attribute<T>> attributes, const char* key) {
    for (const Attribute<T>& attribute : attributes) {
        if (key && std::strcmp(attribute.key, key) == 0) {
            return &attribute;
        }
    }
    return nullptr;
}

/// 0 for no object and for an unknown key.
template <class T>
double read_attribute(std::span<const Attribute<T>> attributes, const T* object, const char* key) {
    const Attribute<T>* attribute = find_attribute(attributes, key);
    return object && attribute ? attribute->read(*object) : 0.0;
}

/// False, with nothing changed, for no object, an unknown or fixed key, and a value that is no finite number.
template <class T>
bool write_attribute(std::span<const Attribute<T>> attributes, T* object, const char* key, double value) {
    const Attribute<T>* attribute = find_attribute(attributes, key);
    if (!object || !attribute || !attribute->write || !std::isfinite(value)) {
        return false;
    }
    attribute->write(*object, value);
    return true;
}

/// Cut towards zero, and to the range of int.
inline int to_int(double value) {
    return static_cast<int>(std::clamp(value, static_cast<double>(std::numeric_limits<int>::min()),
                                       static_cast<double>(std::numeric_limits<int>::max())));
}

} // namespace headless
