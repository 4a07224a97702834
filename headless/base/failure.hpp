#pragma once
// An expected failure in the headless host: a value with a text for the user.

#include <tl/expected.hpp>

#include <filesystem>
#include <string>
#include <system_error>

namespace headless {

/// Why something could not be done. `message` is one line that names the path or object and can be shown.
struct Failure {
    std::string message;
};

/// The failure of a system call on `path`, from errno.
inline Failure system_failure(const std::filesystem::path& path, int error_number) {
    return {path.string() + ": " + std::generic_category().message(error_number)};
}

template <class T>
using Result = tl::expected<T, Failure>;

} // namespace headless
