#include "headless/jobs/earlier_project.hpp"

#include "common/folder_entries.hpp"
#include "common/letter_case.hpp"
#include "common/path_text.hpp"
#include "headless/audio/render.hpp"
#include "headless/base/file_reading.hpp"
#include "headless/base/folder.hpp"
#include "headless/jobs/file_identity.hpp"
#include "headless/jobs/project_output.hpp"
#include "headless/rpp/rpp.hpp"
#include "headless/system/files.hpp"

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>

namespace headless::jobs {
namespace {

namespace fs = std::filesystem;

template <class Visit>
void for_each_item(const project::Project& project, Visit visit) {
    for (const auto& track : project.tracks())
        for (const auto& item : track->items())
            visit(*item);
}

/// Recordings that were rendered for the project: the first takes of items with several takes.
std::vector<fs::path> rendered_recordings(const project::Project& project) {
    std::vector<fs::path> files;
    for_each_item(project, [&](const project::Item& item) {
        if (item.takes().size() > 1 && !item.take(0)->is_empty)
            files.push_back(item.take(0)->source.root().file);
    });
    return files;
}

bool is_named_as_project(const std::string& name) {
    // ".rpp-bak" is a backup
    return letter_case::lowered(path_text::path_of(name).extension().string()).starts_with(".rpp");
}

/// The texts of the other project files in the folder, including backups, joined.
Result<std::string> text_of_projects_beside(const fs::path& project) {
    const fs::path folder = folder_of(project);
    std::error_code error;
    std::string texts;
    for (const folder_entries::Entry& entry : folder_entries::read(folder, error)) {
        if (entry.name == project.filename().string() || !is_named_as_project(entry.name))
            continue;
        const auto text = text_of(folder / path_text::path_of(entry.name));
        if (!text)
            return tl::unexpected(text.error());
        texts.append(text->value_or("")).append("\n");
    }
    if (error)
        return tl::unexpected(system_failure(folder, error.value()));
    return texts;
}

} // namespace

std::vector<fs::path> audio_of(const project::Project& project) {
    std::vector<fs::path> files;
    for_each_item(project, [&](const project::Item& item) {
        for (const auto& take : item.takes())
            if (!take->is_empty)
                files.push_back(take->source.root().file);
    });
    return files;
}

Result<EarlierProject> EarlierProject::read(const fs::path& file) {
    EarlierProject earlier;
    if (std::error_code unknown; fs::status(file, unknown).type() == fs::file_type::not_found)
        return earlier;
    project::Project project;
    if (const auto loaded = rpp::load_project(project, file); !loaded)
        return tl::unexpected(loaded.error());
    earlier.audio_ = headless::jobs::audio_of(project);
    const fs::path render_folder = project.file.parent_path() / project.record_path;
    for_each_item(project, [&](const project::Item& item) {
        for (std::size_t number = 1; number < item.takes().size(); ++number) {
            const fs::path& render = item.take(number)->source.root().file;
            std::error_code error;
            if (fs::equivalent(folder_of(render), render_folder, error))
                earlier.renders_.push_back({item.take(0)->source.root().file, render});
        }
    });
    return earlier;
}

std::vector<Failure> EarlierProject::remove_replaced_renders(const project::Project& present) const {
    const FileIdentities played(headless::jobs::audio_of(present));
    const FileIdentities rendered_anew(rendered_recordings(present));
    std::vector<fs::path> replaced;
    std::vector<Failure> failures;
    for (const auto& [recording, file] : renders_) {
        if (played.contains(file) || !rendered_anew.contains(recording))
            continue;
        const auto is_own = audio::is_own_file(file);
        if (!is_own)
            failures.push_back(is_own.error());
        else if (*is_own)
            replaced.push_back(file);
    }
    if (replaced.empty())
        return failures;
    const auto others = text_of_projects_beside(present.file);
    if (!others) {
        failures.push_back(with_remark(others.error(), "it may play replaced renders, so they stay"));
        return failures;
    }
    for (const fs::path& file : replaced)
        if (others->find(file.filename().string()) == std::string::npos && !system::remove_file(file))
            failures.push_back(system_failure(file, errno));
    return failures;
}

} // namespace headless::jobs
