#pragma once
// How a foreseeable failure travels through the headless host: as a value with a text for the user.

#include <tl/expected.hpp>

#include <string>

namespace headless {

/// Why something could not be done. `message` is one line that names the path or object and can be shown.
struct Failure {
    std::string message;
};

template <class T>
using Result = tl::expected<T, Failure>;

} // namespace headless
