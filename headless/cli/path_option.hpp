#pragma once
// Options that take paths. The parser's own conversion depends on the system's code page.

#include "common/path_text.hpp"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <string>
#include <vector>

namespace headless::cli {

inline CLI::Option* add_path_option(CLI::App& app, const std::string& name, std::filesystem::path& path,
                                    const std::string& help) {
    return app.add_option_function<std::string>(
        name, [&path](const std::string& text) { path = path_text::path_of(text); }, help);
}

inline CLI::Option* add_path_option(CLI::App& app, const std::string& name,
                                    std::vector<std::filesystem::path>& paths, const std::string& help) {
    return app.add_option_function<std::vector<std::string>>(
        name,
        [&paths](const std::vector<std::string>& texts) {
            paths.clear();
            for (const std::string& text : texts)
                paths.push_back(path_text::path_of(text));
        },
        help);
}

} // namespace headless::cli
