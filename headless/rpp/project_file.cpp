#include "headless/base/staged_file.hpp"
#include "headless/rpp/rpp.hpp"
#include "headless/rpp/words.hpp"

#include <array>
#include <fstream>
#include <sstream>

namespace headless {
namespace {

// Pipes and devices are not opened: they might never answer.
bool is_regular(const std::filesystem::path& file) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(file, ignored);
}

} // namespace

Result<void> save_project(const Project& project, const std::filesystem::path& file) {
    return write_file(file, project_text(project, file.parent_path()));
}

Result<void> load_project(Project& project, const std::filesystem::path& file) {
    const auto failure = [&](const std::string& reason) {
        return tl::unexpected(Failure{file.string() + ": " + reason});
    };
    std::error_code error;
    if (!std::filesystem::exists(file, error)) {
        return failure(error ? error.message() : "No such file or directory");
    }
    std::ifstream stream;
    if (is_regular(file)) {
        stream.open(file, std::ios::binary);
    }
    std::ostringstream text;
    if (!stream.is_open() || !(text << stream.rdbuf())) {
        return failure("cannot be read");
    }
    const std::string content = std::move(text).str();
    const auto parsed = parse_project(project, content, file.parent_path());
    if (!parsed) {
        return failure(parsed.error().message);
    }
    project.file = file;
    return {};
}

bool is_own_project(const std::filesystem::path& file) {
    if (!is_regular(file)) {
        return false;
    }
    std::array<char, rpp::own_beginning.size()> beginning{};
    std::ifstream stream(file, std::ios::binary);
    return stream.read(beginning.data(), beginning.size()) &&
           std::string_view(beginning.data(), beginning.size()) == rpp::own_beginning;
}

} // namespace headless
