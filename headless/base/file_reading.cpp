#include "headless/base/file_reading.hpp"

#include "headless/system/files.hpp"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <limits>
#include <system_error>

namespace headless {

namespace fs = std::filesystem;

Result<std::string> read_at(int descriptor, const fs::path& file, std::int64_t position,
                            std::size_t max_bytes) {
    std::string bytes(max_bytes, '\0');
    for (std::size_t done = 0;;) {
        const std::int64_t got = system::read_at(descriptor, bytes.data() + done, max_bytes - done,
                                                 position + static_cast<std::int64_t>(done));
        if (got < 0 && errno != EINTR)
            return tl::unexpected(system_failure(file, errno));
        done += static_cast<std::size_t>(std::max<std::int64_t>(got, 0));
        if (got == 0 || done == max_bytes) {
            bytes.resize(done);
            return bytes;
        }
    }
}

Result<std::optional<std::string>> beginning_of(const fs::path& file, std::size_t max_bytes) {
    constexpr std::size_t block_bytes = std::size_t{1} << 16;
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (!fs::status_known(status))
        return tl::unexpected(system_failure(file, error.value()));
    if (!fs::is_regular_file(status))
        return std::nullopt;
    // Non-blocking, in case a pipe has taken the file's place since.
    const system::Descriptor descriptor(system::open_to_read(file));
    if (descriptor < 0)
        return tl::unexpected(system_failure(file, errno));
    for (std::string text;;) {
        const std::size_t wanted = std::min(max_bytes - text.size(), block_bytes);
        const auto block = read_at(descriptor, file, std::ssize(text), wanted);
        if (!block)
            return tl::unexpected(block.error());
        text += *block;
        if (block->size() < block_bytes)
            return text;
    }
}

Result<std::optional<std::string>> text_of(const fs::path& file) {
    return beginning_of(file, std::numeric_limits<std::size_t>::max());
}

} // namespace headless
