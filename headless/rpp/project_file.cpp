#include "headless/base/atomic_file.hpp"
#include "headless/base/file_reading.hpp"
#include "headless/rpp/rpp.hpp"
#include "headless/rpp/words.hpp"

#include <optional>
#include <string>

namespace headless::rpp {

Result<void> save_project(const project::Project& project, const std::filesystem::path& file) {
    return write_file(file, project_text(project, file.parent_path()));
}

Result<void> load_project(project::Project& project, const std::filesystem::path& given) {
    const auto place = resolve_links(given);
    if (!place)
        return tl::unexpected(place.error());
    const std::filesystem::path& file = *place;
    const auto failure = [&](const std::string& reason) {
        return tl::unexpected(path_failure(file, reason));
    };
    const auto text = text_of(file);
    if (!text)
        return tl::unexpected(text.error());
    if (!*text) {
        std::error_code error;
        return failure(std::filesystem::exists(file, error) ? "is no regular file"
                                                            : "No such file or directory");
    }
    const auto parsed = parse_project(project, **text, file.parent_path());
    if (!parsed)
        return failure(parsed.error().message);
    project.file = file;
    return {};
}

Result<bool> is_own_project(const std::filesystem::path& file) {
    return beginning_of(file, rpp::own_beginning.size()).map([](const std::optional<std::string>& beginning) {
        return beginning == rpp::own_beginning;
    });
}

} // namespace headless::rpp
