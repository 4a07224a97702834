#pragma once
// Options that take paths. The parser's own conversion depends on the system's code page.

#include "common/path_text.hpp"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace headless::cli {

/// An empty text mostly comes from a variable that is not set. It must not pass for an option that is absent.
inline CLI::Validator not_empty() {
    return {[](const std::string& text) { return std::string(text.empty() ? "needs a path" : ""); }, ""};
}

inline CLI::Option* add_path_option(CLI::App& app, const std::string& name, std::filesystem::path& path,
                                    const std::string& help) {
    return app
        .add_option_function<std::string>(
            name, [&path](const std::string& text) { path = path_text::path_of(text); }, help)
        ->check(not_empty());
}

inline CLI::Option* add_path_option(CLI::App& app, const std::string& name,
                                    std::vector<std::filesystem::path>& paths, const std::string& help) {
    return app
        .add_option_function<std::vector<std::string>>(
            name,
            [&paths](const std::vector<std::string>& texts) {
                paths.clear();
                for (const std::string& text : texts)
                    paths.push_back(path_text::path_of(text));
            },
            help)
        ->check(not_empty());
}

/// As CLI::ExistingFile.
inline CLI::Validator existing_file() {
    return {[](const std::string& text) -> std::string {
                std::error_code error;
                const auto status = std::filesystem::status(path_text::path_of(text), error);
                if (!std::filesystem::exists(status))
                    return "File does not exist: " + text;
                return std::filesystem::is_directory(status) ? "File is actually a directory: " + text : "";
            },
            ""};
}

} // namespace headless::cli
