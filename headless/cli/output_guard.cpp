#include "headless/cli/output_guard.hpp"

#include "headless/audio/render.hpp"
#include "headless/rpp/rpp.hpp"

#include <sys/stat.h>
#include <system_error>

namespace headless {
namespace {

tl::unexpected<Failure> refusal(const std::filesystem::path& target, const char* reason) {
    return tl::unexpected(Failure{target.string() + ": not overwritten, as it " + reason});
}

/// A broken link is a name that is taken, too.
bool is_taken(const std::filesystem::path& target) {
    std::error_code error;
    return std::filesystem::exists(std::filesystem::symlink_status(target, error));
}

} // namespace

OutputGuard::OutputGuard(std::span<const std::filesystem::path> inputs) : inputs_(identities_of(inputs)) {}

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

Result<void> OutputGuard::permits_project(const std::filesystem::path& target) const {
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error))
        return tl::unexpected(Failure{target.string() + ": the folder for the project file does not exist"});
    if (!is_taken(target))
        return {};
    const Identities identity = identities_of({&target, 1});
    if (!identity.empty() && inputs_.contains(*identity.begin()))
        return refusal(target, "is one of the recordings");
    if (!is_own_project(target))
        return refusal(target, "is no project file made by this command");
    return {};
}

void OutputGuard::wrote(const std::filesystem::path& file) { written_.merge(identities_of({&file, 1})); }

} // namespace headless
