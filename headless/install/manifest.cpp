#include "headless/install/manifest.hpp"

#include "headless/base/atomic_file.hpp"
#include "headless/base/file_reading.hpp"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace headless::install {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view head = "# MERIDEK_FELSPAR: installed files with their SHA-256 sums";
constexpr std::string_view folder_mark = "# folder ";
constexpr std::string_view separator = "  ";
constexpr std::size_t sum_digits = 64;

bool is_control(char letter) { return static_cast<unsigned char>(letter) < ' ' || letter == '\x7f'; }

/// Whether it is a path as this program writes them. A second spelling of a path would make two files of one.
bool is_path(std::string_view path) {
    if (path.find_first_of("\\:|") != std::string_view::npos || std::ranges::any_of(path, is_control))
        return false;
    for (;;) {
        const std::size_t end = path.find('/');
        const std::string_view part = path.substr(0, end);
        if (part.empty() || part == "." || part == "..")
            return false;
        if (end == std::string_view::npos)
            return true;
        path.remove_prefix(end + 1);
    }
}

bool is_sum(std::string_view text) {
    return text.size() == sum_digits && text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/// @param number  from 1
/// @returns whether the line is one of such a list
bool add_line(Manifest& manifest, std::string_view line, int number) {
    if (line.ends_with('\r')) // an editor may have written it
        line.remove_suffix(1);
    if (number == 1)
        return line == head;
    if (line.starts_with(folder_mark)) {
        const std::string_view folder = line.substr(folder_mark.size());
        manifest.folders.emplace(folder);
        return is_path(folder);
    }
    if (line.empty() || line.starts_with('#'))
        return true;
    const std::string_view sum = line.substr(0, sum_digits);
    line.remove_prefix(sum.size());
    if (!is_sum(sum) || !line.starts_with(separator) || !is_path(line.substr(separator.size())))
        return false;
    manifest.files[std::string(line.substr(separator.size()))].emplace(sum);
    return true;
}

} // namespace

bool Manifest::has(const std::string& path, const std::string& sum) const {
    const auto listed = files.find(path);
    return listed != files.end() && listed->second.contains(sum);
}

Result<Manifest> read_manifest(const fs::path& resource_folder) {
    const fs::path file = resource_folder / manifest_path;
    const auto text = text_of(file);
    if (!text)
        return tl::unexpected(text.error());
    Manifest manifest;
    manifest.is_there = text->has_value();
    std::string_view rest = manifest.is_there ? std::string_view(**text) : std::string_view();
    for (int number = 1; manifest.is_there && (number == 1 || !rest.empty()); ++number) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        if (!add_line(manifest, rest.substr(0, end), number))
            return tl::unexpected(path_failure(file, "line " + std::to_string(number) + " is damaged"));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return manifest;
}

Result<void> write_manifest(const Manifest& manifest, const fs::path& resource_folder) {
    std::string text(head);
    text += '\n';
    for (const std::string& folder : manifest.folders)
        text.append(folder_mark).append(folder).append("\n");
    for (const auto& [path, sums] : manifest.files)
        for (const std::string& sum : sums)
            text.append(sum).append(separator).append(path).append("\n");
    return write_file(resource_folder / manifest_path, text);
}

} // namespace headless::install
