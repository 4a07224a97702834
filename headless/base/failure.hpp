#pragma once
// An expected failure in the headless host: a value with its kind, the file concerned, and a text for the
// user.

#include <tl/expected.hpp>

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace headless {

enum class FailureKind {
    other,
    system,      ///< a system call failed
    refused,     ///< an output would replace a file that must stay
    interrupted, ///< a signal ended the work
};

/// Why something could not be done. `message` is one line that names the path or object and can be shown;
/// code decides by the other members.
struct Failure {
    std::string message;
    std::filesystem::path path{}; ///< the file or folder concerned; empty if there is none
    FailureKind kind = FailureKind::other;

    friend bool operator==(const Failure&, const Failure&) = default;
};

/// The failure of something that concerns `path`: "path: reason".
inline Failure path_failure(const std::filesystem::path& path, std::string_view reason,
                            FailureKind kind = FailureKind::other) {
    return {path.string().append(": ").append(reason), path, kind};
}

/// The failure of a system call on `path`, from errno.
inline Failure system_failure(const std::filesystem::path& path, int error_number) {
    return path_failure(path, std::generic_category().message(error_number), FailureKind::system);
}

/// The same failure with a remark after its message, in brackets.
inline Failure with_remark(Failure failure, std::string_view remark) {
    failure.message.append(" (").append(remark).append(")");
    return failure;
}

template <class T>
using Result = tl::expected<T, Failure>;

} // namespace headless
