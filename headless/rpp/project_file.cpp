#include "headless/base/atomic_file.hpp"
#include "headless/base/file_reading.hpp"
#include "headless/rpp/rpp.hpp"

#include <optional>
#include <string>
#include <system_error>

namespace headless::rpp {
namespace {

std::filesystem::path folder_of(const std::filesystem::path& file) {
    std::error_code error; // without a current folder the path stays relative
    const auto absolute = std::filesystem::absolute(file, error);
    return (error ? file : absolute).parent_path();
}

} // namespace

Result<void> save_project(project::Project& project, const std::filesystem::path& file) {
    auto written = AtomicFile::create(file);
    if (!written)
        return tl::unexpected(written.error());
    Result<void> result;
    write_project(project, folder_of(file), [&](std::string_view piece) {
        if (result)
            result = written->write(piece);
    });
    return result.and_then([&] { return written->publish(ExistingFile::replace); });
}

Result<void> load_project(project::Project& project, const std::filesystem::path& given) {
    const auto place = resolve_links(given);
    if (!place)
        return tl::unexpected(place.error());
    const std::filesystem::path& file = *place;
    const auto failure = [&](const std::string& reason) {
        return tl::unexpected(path_failure(file, reason));
    };
    auto text = text_of(file);
    if (!text)
        return tl::unexpected(text.error());
    if (!*text) {
        std::error_code error;
        return failure(std::filesystem::exists(file, error) ? "is no regular file"
                                                            : "No such file or directory");
    }
    const auto parsed = parse_project(project, std::move(**text), folder_of(file));
    if (!parsed)
        return failure(parsed.error().message);
    project.file = file;
    return {};
}

Result<bool> is_own_project(const std::filesystem::path& file) {
    const std::string_view own = beginning_of_own_projects();
    return beginning_of(file, own.size()).map([&](const std::optional<std::string>& beginning) {
        return beginning == own;
    });
}

} // namespace headless::rpp
