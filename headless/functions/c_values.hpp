#pragma once
// Translations that several host functions need: outputs through pointers, text buffers, indices.

#include "headless/workstation/text.hpp"

#include <cstddef>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace headless::functions {

/// Writes a value unless the pointer is null, which callers pass for results that they do not need.
template <class T>
void put(T* target, std::type_identity_t<T> value) {
    if (target)
        *target = value;
}

/// Sets the property to the text, or copies the property to the text, a buffer of unsized_buffer_bytes.
inline void get_or_set(std::string& property, char* text, bool is_set) {
    if (is_set)
        property = text;
    else
        workstation::copy_text(property, text, workstation::unsized_buffer_bytes);
}

/// The element of that index, null if there is none.
template <class T>
T* element(const std::vector<std::unique_ptr<T>>& elements, int index) {
    const auto place = static_cast<std::size_t>(index); // past the end if the index is negative
    return place < elements.size() ? elements[place].get() : nullptr;
}

} // namespace headless::functions
