#pragma once
// The folder for an import's renders.

#include "headless/base/failure.hpp"

#include <filesystem>
#include <system_error>
#include <utility>

namespace headless::jobs {

/// Creates the folder if it is missing. The destructor removes a folder that was created and is still empty.
class RenderFolder {
public:
    static Result<RenderFolder> make(const std::filesystem::path& folder) {
        std::error_code error;
        const bool is_new = std::filesystem::create_directories(folder, error);
        if (error) {
            return tl::unexpected(path_failure(
                folder, "cannot make the folder for renders: " + error.message(), FailureKind::system));
        }
        return RenderFolder(is_new ? folder : std::filesystem::path());
    }
    RenderFolder(RenderFolder&& other) noexcept : created_(std::exchange(other.created_, {})) {}
    RenderFolder& operator=(RenderFolder&&) = delete;
    ~RenderFolder() {
        std::error_code not_empty;
        if (!created_.empty())
            std::filesystem::remove(created_, not_empty);
    }

private:
    explicit RenderFolder(std::filesystem::path created) : created_(std::move(created)) {}

    std::filesystem::path created_; ///< empty if the folder was there before
};

} // namespace headless::jobs
