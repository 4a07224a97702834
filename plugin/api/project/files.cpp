#include "api/project/files.hpp"

#include "common/folder_entries.hpp"
#include "common/path_text.hpp"
#include "common/paths.hpp"
#include "host_api/arguments.hpp"
#include "system/copy_over.hpp"
#include "system/readable_file.hpp"
#include "utility/mk_utility.hpp"

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>

namespace {

namespace fs = std::filesystem;
using path_text::path_of;
using path_text::text_of;

fs::path path_named(const char* text) { return path_of(text_or_empty(text)); }

/// For what may be a folder.
fs::path folder_named(const char* text) { return paths::to_ask_for(path_named(text)); }

fs::path join(const char* directory, const char* name) {
    return paths::join(path_named(directory), path_named(name));
}

bool opens_for_reading(const fs::path& file) { return ReadableFile(file).is_open(); }

/// Returns the path itself, or the first of its numbered variants that is free.
fs::path free_name(fs::path file) {
    const auto [stem, extension] = mk_utility::split_extension(text_of(file.filename()));
    for (int number = 1; opens_for_reading(file); ++number)
        file.replace_filename(
            path_of(std::string(stem).append("(").append(std::to_string(number)).append(").") + extension));
    return file;
}

bool write(const fs::path& file, const char* text, std::ios::openmode mode) {
    std::error_code none;
    if (fs::is_fifo(file, none))
        return false;
    std::ofstream stream(file, mode | std::ios::binary); // line ends stay as they are
    stream << text;
    return stream.is_open();
}

/// Reads a text and ends its last line. Reads no more than needed to fill `size` bytes. Returns nothing if
/// the file cannot be read.
std::optional<std::string> read(const ReadableFile& file, std::size_t size) {
    std::string text;
    std::array<char, 65536> block;
    std::ptrdiff_t count = 1;
    while (count > 0 && text.size() < size) {
        count = file.read(block.data(), block.size());
        if (count < 0)
            return std::nullopt;
        text.append(block.data(), static_cast<std::size_t>(count));
    }
    if (count == 0 && !text.empty() && text.back() != '\n')
        text += '\n';
    return text;
}

/// Asks the system whether they are the same: some systems ignore the case of names.
bool is_within(const fs::path& path, const fs::path& folder) {
    std::error_code error;
    fs::path inner = paths::weakly_canonical(path, error);
    if (error)
        throw fs::filesystem_error("no whole path", path, error);
    while (!(fs::exists(inner) && fs::equivalent(inner, folder))) {
        fs::path outer = inner.parent_path();
        if (outer == inner)
            return false;
        inner = std::move(outer);
    }
    return true;
}

/// Copies a file, replacing another, or a folder with its contents.
void copy_all(const fs::path& from, const fs::path& to) {
    if (!fs::is_directory(from))
        return copy_over(from, to);
    fs::create_directory(paths::to_ask_for(to), from);
    for (const folder_entries::Entry& entry : folder_entries::read(from))
        copy_all(from / path_of(entry.name), to / path_of(entry.name));
}

bool has_extension(std::string_view name, const std::string& dotted) {
    const std::size_t dot = name.rfind('.');
    return dot != 0 && dot != std::string_view::npos &&
           mk_utility::Stricmp(name.substr(dot).data(), dotted.c_str());
}

/// Appends the paths below a folder whose names have the extension. Each folder's contents follow it.
void append_paths(const fs::path& folder, const std::string& dotted, std::vector<std::string>& paths) {
    for (const folder_entries::Entry& entry : folder_entries::read(folder)) {
        const fs::path path = folder / path_of(entry.name);
        if (has_extension(entry.name, dotted))
            paths.push_back(text_of(path));
        if (entry.is_folder)
            append_paths(path, dotted, paths);
    }
}

} // namespace

namespace MK_FELSPAR {

bool WriteFile(const char* directory, const char* filename, const char* text, int mode) {
    try {
        if (const fs::path folder = folder_named(directory); !fs::exists(folder))
            fs::create_directories(folder);
        const fs::path file = join(directory, filename);
        switch (mode) {
        case 0:
            return write(file, text_or_empty(text), std::ios::trunc);
        case 1:
            return write(free_name(file), text_or_empty(text), std::ios::trunc);
        case 2:
            return write(file, text_or_empty(text), std::ios::app);
        default:
            return false;
        }
    } catch (const std::exception&) {
        return false;
    }
}

bool ReadFile(const char* directory, const char* filename, char* textOutNeedBig, int textOutNeedBig_sz) {
    try {
        const fs::path path = join(directory, filename);
        const ReadableFile file(path);
        if (!file.is_open() || fs::is_fifo(path))
            return false;
        std::optional<std::string> text =
            read(file, static_cast<std::size_t>(std::max(textOutNeedBig_sz, 0)));
        if (!text)
            return false;
        mk_utility::strcpy(textOutNeedBig, textOutNeedBig_sz, *std::move(text));
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool SetCopyFile(const char* copyFilePath, const char* pasteFilePath) {
    try {
        const fs::path from = folder_named(copyFilePath);
        const fs::path to = path_named(pasteFilePath);
        if (fs::is_directory(from) && is_within(to, from))
            return false;
        copy_all(from, to);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace MK_FELSPAR

namespace mk_api::path {

bool GetFilePathList(const std::string& folder, const std::string& extension,
                     std::vector<std::string>& paths) {
    const fs::path root = path_of(folder);
    std::error_code none;
    if (!fs::is_directory(paths::to_ask_for(root), none))
        return false;
    append_paths(root, "." + extension, paths);
    return true;
}

int GetPathInfo(const std::string& filePath, mk_object::mk_Path& pathInfo) {
    return pathInfo.read_path(filePath);
}

} // namespace mk_api::path
