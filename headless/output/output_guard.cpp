#include "headless/output/output_guard.hpp"

#include "headless/audio/render.hpp"
#include "headless/report/import_report.hpp"
#include "headless/rpp/rpp.hpp"

#include <fstream>
#include <string>
#include <strings.h>
#include <sys/stat.h>
#include <system_error>

namespace headless {
namespace {

tl::unexpected<Failure> refusal(const std::filesystem::path& target, const std::string& reason) {
    return tl::unexpected(Failure{target.string() + ": not overwritten, as it " + reason});
}

/// A broken link is a name that is taken, too.
bool is_taken(const std::filesystem::path& target) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(target, error));
}

/// Only a regular file: a pipe might never answer.
std::ifstream open_text(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::is_regular_file(file, error) ? std::ifstream(file, std::ios::binary)
                                                         : std::ifstream();
}

bool is_own_table(const std::filesystem::path& file) {
    const std::string heading = csv_heading();
    std::string beginning(heading.size(), '\0');
    std::ifstream stream = open_text(file);
    return stream.is_open() && stream.read(beginning.data(), std::ssize(beginning)) && beginning == heading;
}

/// It has no mark of its own: its form must do, absolute paths of wav files and nothing else.
bool is_own_list(const std::filesystem::path& file) {
    std::ifstream stream = open_text(file);
    if (!stream.is_open())
        return false;
    for (std::string line; std::getline(stream, line);) {
        if (!line.starts_with('/') || line.size() < 5 ||
            strcasecmp(line.c_str() + line.size() - 4, ".wav") != 0)
            return false;
    }
    return true;
}

} // namespace

OutputGuard::OutputGuard(std::span<const std::filesystem::path> inputs) : inputs_(identities_of(inputs)) {}

void OutputGuard::protect(std::span<const std::filesystem::path> inputs) {
    inputs_.merge(identities_of(inputs));
}

OutputGuard::Identities OutputGuard::identities_of(std::span<const std::filesystem::path> files) {
    Identities identities;
    for (const std::filesystem::path& file : files) {
        struct stat status {};
        if (stat(file.c_str(), &status) == 0)
            identities.emplace(status.st_dev, status.st_ino);
    }
    return identities;
}

Result<void> OutputGuard::permits_audio(const std::filesystem::path& target) const {
    if (!is_taken(target))
        return {};
    const Identities identity = identities_of({&target, 1});
    if (!identity.empty() && inputs_.contains(*identity.begin()))
        return refusal(target, "is one of the recordings");
    if (!identity.empty() && written_.contains(*identity.begin()))
        return refusal(target, "was written for another recording of that name");
    if (!is_own_file(target))
        return refusal(target, "was not made by this command");
    return {};
}

Result<void> OutputGuard::permits_in_folder(const std::filesystem::path& target, IsOwn* is_own,
                                            const char* kind) const {
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error))
        return tl::unexpected(Failure{target.string() + ": the folder for the " + kind + " does not exist"});
    if (!is_taken(target))
        return {};
    const Identities identity = identities_of({&target, 1});
    if (!identity.empty() && inputs_.contains(*identity.begin()))
        return refusal(target, "is one of the recordings");
    if (!is_own(target))
        return refusal(target, std::string("is no ").append(kind).append(" made by this command"));
    return {};
}

Result<void> OutputGuard::permits_project(const std::filesystem::path& target) const {
    return permits_in_folder(target, is_own_project, "project file");
}

Result<void> OutputGuard::permits_table(const std::filesystem::path& target) const {
    return permits_in_folder(target, is_own_table, "table");
}

Result<void> OutputGuard::permits_list(const std::filesystem::path& target) const {
    return permits_in_folder(target, is_own_list, "list");
}

void OutputGuard::wrote(const std::filesystem::path& file) { written_.merge(identities_of({&file, 1})); }

} // namespace headless
