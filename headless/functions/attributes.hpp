#pragma once
// Attributes by key, as in the Get...Info_Value and Set...Info_Value functions: one row each. A row names the
// functions that read and write the property, or where it stands in the object's lines:
//
//   {"D_FADEINLEN", number_at("FADEIN", 2, 0.0)}

#include "headless/functions/parameters.hpp"
#include "headless/rpp/properties.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace headless::functions {

/// A property that has no member: it is read from the object's lines and written there.
struct LineField {
    rpp::FieldPlace place;
    double lowest = std::numeric_limits<double>::lowest(); ///< values outside are limited to the range
    double highest = std::numeric_limits<double>::max();
    bool is_whole = false; ///< fractions are cut off
};

/// A number from `lowest` to `highest`.
constexpr LineField number_at(std::string_view token, std::size_t word, double lowest = LineField{}.lowest,
                              double highest = LineField{}.highest) {
    return {{token, word}, lowest, highest, false};
}

/// A whole number from `lowest` to `highest`.
constexpr LineField whole_number_at(std::string_view token, std::size_t word,
                                    double lowest = std::numeric_limits<int>::min(),
                                    double highest = std::numeric_limits<int>::max()) {
    return {{token, word}, lowest, highest, true};
}

/// 0 or 1.
constexpr LineField flag_at(std::string_view token, std::size_t word) {
    return {{token, word}, 0.0, 1.0, true};
}

/// One key: its property is reached through two functions, or lies in the object's lines.
template <class T>
class Attribute {
public:
    using Read = double (*)(const T&);
    using Write = void (*)(T&, double);

    /// @param writer null: read-only
    constexpr Attribute(const char* attribute_key, Read reader, Write writer)
        : key(attribute_key), read_(reader), write_(writer) {}
    constexpr Attribute(const char* attribute_key, LineField field) : key(attribute_key), field_(field) {}

    double read(const T& object) const {
        return read_ ? read_(object) : rpp::number_of(object, field_.place);
    }

    /// @returns false if the attribute is read-only
    bool write(T& object, double value) const {
        if (write_)
            write_(object, value);
        else if (!read_)
            rpp::set_number(object, field_.place, held(value));
        return write_ || !read_;
    }

    const char* key;

private:
    double held(double value) const {
        const double limited = std::clamp(value, field_.lowest, field_.highest);
        return field_.is_whole ? std::trunc(limited) : limited;
    }

    Read read_ = nullptr;
    Write write_ = nullptr;
    LineField field_{};
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
    return attribute && std::isfinite(value) && attribute->write(object, value);
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
