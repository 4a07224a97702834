#include "headless/base/folder.hpp"

#include "headless/system/files.hpp"

#include <cerrno>

namespace headless {

namespace fs = std::filesystem;

fs::path folder_of(const fs::path& file) { return file.has_parent_path() ? file.parent_path() : "."; }

Result<void> flush_folder(const fs::path& folder) {
    return system::sync_folder(folder) ? Result<void>() : tl::unexpected(system_failure(folder, errno));
}

} // namespace headless
