#include "system/copy_over.hpp"

void copy_over(const std::filesystem::path& from, const std::filesystem::path& to) {
    std::filesystem::copy(from, to, std::filesystem::copy_options::overwrite_existing);
}
