#include "api/project/files.hpp"

#include "common/folder_entries.hpp"
#include "host_api/arguments.hpp"
#include "utility/mk_utility.hpp"

#include <algorithm>
#include <array>
#include <cerrno>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

fs::path join(const char* directory, const char* name) {
    return fs::path(text_or_empty(directory)) / text_or_empty(name);
}

/// A file open for reading. Nothing blocks: opening does not wait for the other end of a pipe, and reading
/// does not wait for a user at a terminal.
class ReadableFile {
public:
    explicit ReadableFile(const fs::path& file)
        : descriptor_(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC)) {}
    ~ReadableFile() {
        if (is_open())
            close(descriptor_);
    }
    ReadableFile(const ReadableFile&) = delete;
    ReadableFile& operator=(const ReadableFile&) = delete;

    bool is_open() const { return descriptor_ >= 0; }

    /// Reads up to `count` bytes.
    /// @returns the number of bytes read; 0 at the end and for a folder; negative on failure
    ssize_t read(char* bytes, std::size_t count) const {
        ssize_t got = 0;
        do
            got = ::read(descriptor_, bytes, count);
        while (got < 0 && errno == EINTR);
        return got < 0 && errno == EISDIR ? 0 : got;
    }

private:
    int descriptor_;
};

bool opens_for_reading(const fs::path& file) { return ReadableFile(file).is_open(); }

/// Returns the path itself, or the first of its numbered variants that is free.
fs::path free_name(fs::path file) {
    const auto [stem, extension] = mk_utility::split_extension(file.filename().string());
    for (int number = 1; opens_for_reading(file); ++number)
        file.replace_filename(std::string(stem).append("(").append(std::to_string(number)).append(").") +
                              extension);
    return file;
}

bool write(const fs::path& file, const char* text, std::ios::openmode mode) {
    std::error_code none;
    if (fs::is_fifo(file, none))
        return false;
    std::ofstream stream(file, mode);
    stream << text;
    return stream.is_open();
}

/// Reads a text and ends its last line. Reads no more than needed to fill `size` bytes. Returns nothing if
/// the file cannot be read.
std::optional<std::string> read(const ReadableFile& file, std::size_t size) {
    std::string text;
    std::array<char, 65536> block;
    ssize_t count = 1;
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

bool is_within(const fs::path& path, const fs::path& folder) {
    const fs::path inner = fs::weakly_canonical(path);
    const fs::path outer = fs::weakly_canonical(folder);
    return std::ranges::mismatch(outer, inner).in1 == outer.end();
}

/// Copies a file, replacing another, or a folder with its contents.
void copy_all(const fs::path& from, const fs::path& to) {
    if (!fs::is_directory(from))
        return fs::copy(from, to, fs::copy_options::overwrite_existing);
    fs::create_directory(to, from);
    for (const folder_entries::Entry& entry : folder_entries::read(from))
        copy_all(from / entry.name, to / entry.name);
}

bool has_extension(std::string_view name, const std::string& dotted) {
    const std::size_t dot = name.rfind('.');
    return dot != 0 && dot != std::string_view::npos &&
           mk_utility::Stricmp(name.substr(dot).data(), dotted.c_str());
}

/// Appends the paths below a folder whose names have the extension. Each folder's contents follow it.
void append_paths(const fs::path& folder, const std::string& dotted, std::vector<std::string>& paths) {
    for (const folder_entries::Entry& entry : folder_entries::read(folder)) {
        const fs::path path = folder / entry.name;
        if (has_extension(entry.name, dotted))
            paths.push_back(mk_utility::multi_to_utf8(path.string()));
        if (entry.is_folder)
            append_paths(path, dotted, paths);
    }
}

} // namespace

namespace MK_FELSPAR {

bool WriteFile(const char* directory, const char* filename, const char* text, int mode) {
    try {
        if (const fs::path folder = text_or_empty(directory); !fs::exists(folder))
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
        const fs::path from = mk_utility::utf8_to_multi(text_or_empty(copyFilePath));
        const fs::path to = mk_utility::utf8_to_multi(text_or_empty(pasteFilePath));
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
    const fs::path root = mk_utility::utf8_to_multi(folder);
    std::error_code none;
    if (!fs::is_directory(root, none))
        return false;
    append_paths(root, "." + extension, paths);
    return true;
}

int GetPathInfo(const std::string& filePath, mk_object::mk_Path& pathInfo) {
    return pathInfo.read_path(filePath);
}

} // namespace mk_api::path
