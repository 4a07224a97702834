#include "headless/report/text_file.hpp"

#include "headless/base/staged_file.hpp"

#include <algorithm>

namespace headless {
namespace {

Result<void> write_all(int descriptor, std::string_view text, const std::filesystem::path& file) {
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR)
            return tl::unexpected(system_failure(file, errno));
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return {};
}

} // namespace

Result<void> write_text_file(const std::filesystem::path& file, std::string_view text) {
    auto staged = StagedFile::create(file);
    if (!staged)
        return tl::unexpected(staged.error());
    return write_all(staged->descriptor(), text, file)
        .and_then([&] { return staged->flush_to_disk(); })
        .and_then([&] { return staged->publish(ExistingFile::replace); });
}

} // namespace headless
