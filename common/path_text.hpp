#pragma once
// Texts of paths. They are UTF-8 on every system: scripts, hosts and project files have no other encoding.

#include <filesystem>
#include <string>
#include <string_view>

namespace path_text {

/// The path that a text names. Where the system's paths are bytes, they are the text's.
/// @throws std::filesystem::filesystem_error where they are not, for a text that is not UTF-8
inline std::filesystem::path path_of(std::string_view text) {
    return std::u8string(text.begin(), text.end());
}

/// The text of a path as it was given, with the system's own separator where the path was joined.
/// @throws std::filesystem::filesystem_error for a name that has no UTF-8 form
inline std::string text_of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace path_text
