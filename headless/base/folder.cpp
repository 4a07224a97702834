#include "headless/base/folder.hpp"

#include "headless/base/atomic_file.hpp"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace headless {

namespace fs = std::filesystem;

fs::path folder_of(const fs::path& file) { return file.has_parent_path() ? file.parent_path() : "."; }

Result<void> flush_folder(const fs::path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool is_flushed = descriptor >= 0 && (fsync(descriptor) == 0 || errno == EINVAL);
    const int error_number = errno;
    if (descriptor >= 0)
        close(descriptor);
    return is_flushed ? Result<void>() : tl::unexpected(system_failure(folder, error_number));
}

} // namespace headless
