#include "common/paths.hpp"
#include "headless/base/file_reading.hpp"
#include "headless/rpp/rpp.hpp"

#include <optional>
#include <string>
#include <system_error>

namespace headless::rpp {
namespace {

bool holds_own_object(std::string_view text) {
    constexpr std::size_t guid_size = 38;
    for (std::size_t place = text.find('{'); place != text.npos; place = text.find('{', place + 1)) {
        const auto guid = chunk::guid_of(text.substr(place, guid_size));
        if (guid && chunk::is_own(*guid))
            return true;
    }
    return false;
}

/// Absolute and without links, so that another spelling of it is no other folder when the project is saved.
std::filesystem::path true_folder_of(const std::filesystem::path& file) {
    std::error_code error;
    const std::filesystem::path found = paths::weakly_canonical(file, error);
    return (error ? file : found).parent_path();
}

} // namespace

Result<void> save_project(project::Project& project, const std::filesystem::path& file) {
    return write_new_file(project, file).and_then([](AtomicFile&& written) {
        return written.publish(ExistingFile::replace);
    });
}

Result<AtomicFile> write_new_file(project::Project& project, const std::filesystem::path& file) {
    auto written = AtomicFile::create(file);
    if (!written)
        return written;
    Result<void> result;
    write_project(project, true_folder_of(file), [&](std::string_view piece) {
        if (result)
            result = written->write(piece);
    });
    if (!result)
        return tl::unexpected(result.error());
    return written;
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
    const auto parsed = parse_project(project, std::move(**text), true_folder_of(file));
    if (!parsed)
        return failure(parsed.error().message);
    project.file = file;
    return {};
}

Result<bool> is_own_project(const std::filesystem::path& file) {
    constexpr std::string_view of_any = "<REAPER_PROJECT ";
    const std::string_view own = beginning_of_own_projects();
    const auto beginning = beginning_of(file, own.size());
    if (!beginning)
        return tl::unexpected(beginning.error());
    if (!*beginning || !(*beginning)->starts_with(of_any) || **beginning == own)
        return *beginning == own;
    return text_of(file).map(
        [](const std::optional<std::string>& text) { return text && holds_own_object(*text); });
}

} // namespace headless::rpp
