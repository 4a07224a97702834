#pragma once
// Which members of the model stand where in an object's lines. Reading and writing use the same tables, so a
// field is written only if it would be read as another value than the model has.

#include "headless/project/project.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <span>
#include <string_view>

namespace headless::rpp {

template <class T>
struct Field {
    std::string_view token;
    std::size_t word;
    double otherwise;        ///< what it means that the word is missing
    double (*get)(const T&); ///< as it stands in the file
    void (*set)(T&, double); ///< a value from the file
    double (*held)(double);  ///< what `get` returns after `set`
    /// What to write over a value in the file that holds more than the member; null: the member's value.
    double (*merged)(double in_file, double wanted) = nullptr;
};

inline double as_is(double value) { return value; }

inline double as_flag(double value) { return value != 0.0 ? 1.0 : 0.0; }

inline int to_int(double value) {
    return static_cast<int>(std::clamp(value, static_cast<double>(std::numeric_limits<int>::min()),
                                       static_cast<double>(std::numeric_limits<int>::max())));
}

inline double as_int(double value) { return to_int(value); }

template <class>
struct MemberOf;
template <class T, class Value>
struct MemberOf<Value T::*> {
    using Object = T;
    using Type = Value;
};

/// A field for a public member.
template <auto member>
constexpr auto field(std::string_view token, std::size_t word, double otherwise) {
    using T = typename MemberOf<decltype(member)>::Object;
    using Value = typename MemberOf<decltype(member)>::Type;
    return Field<T>{token,
                    word,
                    otherwise,
                    [](const T& object) { return static_cast<double>(object.*member); },
                    [](T& object, double value) {
                        if constexpr (std::is_same_v<Value, double>)
                            object.*member = value;
                        else if constexpr (std::is_same_v<Value, bool>)
                            object.*member = value != 0.0;
                        else
                            object.*member = static_cast<Value>(to_int(value));
                    },
                    std::is_same_v<Value, double> ? as_is
                    : std::is_same_v<Value, bool> ? as_flag
                                                  : as_int};
}

std::span<const Field<project::Project>> project_fields();
std::span<const Field<project::Track>> track_fields();
/// Of the master, whose lines are the project's.
std::span<const Field<project::Track>> master_fields();
std::span<const Field<project::Item>> item_fields();
std::span<const Field<project::Take>> take_fields();
/// The fields in the line of the take's volume, which differs between the first take and the others.
std::span<const Field<project::Take>> volume_fields(bool is_first);
std::span<const Field<project::EnvelopeProperties>> envelope_fields();

} // namespace headless::rpp
