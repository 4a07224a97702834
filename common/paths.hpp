#pragma once
// Operations on users' paths. On Windows some standard libraries see no root in a network path
// (`\\server\share`) and take it for one on the current drive; these functions leave it whole.

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace paths {

inline bool is_separator(std::filesystem::path::value_type letter) {
    return letter == '/' || letter == std::filesystem::path::preferred_separator;
}

/// Whether the path is a network path in which the standard library sees no root.
inline bool has_unseen_server(const std::filesystem::path& path) {
    const auto& text = path.native();
    return !path.is_absolute() && text.size() > 1 && is_separator(text[0]) && is_separator(text[1]);
}

inline bool is_absolute(const std::filesystem::path& path) {
    return path.is_absolute() || has_unseen_server(path);
}

/// As std::filesystem::absolute.
inline std::filesystem::path absolute(const std::filesystem::path& path, std::error_code& error) {
    error.clear();
    return has_unseen_server(path) ? path : std::filesystem::absolute(path, error);
}

/// The same. @throws std::filesystem::filesystem_error
inline std::filesystem::path absolute(const std::filesystem::path& path) {
    return has_unseen_server(path) ? path : std::filesystem::absolute(path);
}

/// As lexically_normal.
inline std::filesystem::path normal(const std::filesystem::path& path) {
    if (!has_unseen_server(path))
        return path.lexically_normal();
    const auto& text = path.native();
    const auto behind_server = std::find_if(text.begin() + 2, text.end(), is_separator);
    std::filesystem::path server(text.begin(), behind_server); // it may be a dot
    server += std::filesystem::path(behind_server, text.end()).lexically_normal();
    return server.make_preferred();
}

/// `folder / path`
inline std::filesystem::path join(const std::filesystem::path& folder, const std::filesystem::path& path) {
    return has_unseen_server(path) ? path : folder / path;
}

/// The path by which to ask the system for a folder: on Windows its C library finds none by a name with a
/// separator behind it.
inline std::filesystem::path to_ask_for(const std::filesystem::path& path) {
    constexpr bool is_windows = std::filesystem::path::preferred_separator != '/';
    const bool ends_in_separator = path.has_relative_path() && !path.has_filename();
    return is_windows && ends_in_separator ? path.parent_path() : path;
}

/// As std::filesystem::canonical. The links of an unseen server's paths are not followed.
inline std::filesystem::path canonical(const std::filesystem::path& path, std::error_code& error) {
    const std::filesystem::path asked = to_ask_for(path);
    if (!has_unseen_server(asked))
        return std::filesystem::canonical(asked, error);
    if (!std::filesystem::exists(asked, error) && !error)
        error = std::make_error_code(std::errc::no_such_file_or_directory);
    return error ? std::filesystem::path() : normal(asked);
}

/// As std::filesystem::weakly_canonical of the absolute path, with the same exception.
inline std::filesystem::path weakly_canonical(const std::filesystem::path& path, std::error_code& error) {
    std::filesystem::path whole = paths::absolute(path, error);
    if (error)
        return whole;
    return has_unseen_server(whole) ? normal(whole) : std::filesystem::weakly_canonical(whole, error);
}

} // namespace paths
