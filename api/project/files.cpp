#include "api/project/files.hpp"

#include "utility/mk_utility.hpp"

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

constexpr const char* empty_if_null(const char* text) { return text ? text : ""; }

fs::path join(const char* directory, const char* name) {
    return fs::path(empty_if_null(directory)) / empty_if_null(name);
}

// Opening a pipe would wait for its other end.
bool opens_for_reading(const fs::path& file) {
    std::error_code none;
    return fs::is_fifo(file, none) || std::ifstream(file).is_open();
}

/// The path itself, or the first of its numbered siblings that is free.
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

/// A text whose last line ends; no more than needed to fill `size` bytes is read.
std::string read(std::istream& stream, std::size_t size) {
    std::string text;
    std::array<char, 65536> block;
    while (stream && text.size() < size) {
        stream.read(block.data(), block.size());
        text.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    }
    if (stream.eof() && !text.empty() && text.back() != '\n')
        text += '\n';
    return text;
}

bool is_within(const fs::path& path, const fs::path& folder) {
    const fs::path inner = fs::weakly_canonical(path);
    const fs::path outer = fs::weakly_canonical(folder);
    return std::ranges::mismatch(outer, inner).in1 == outer.end();
}

} // namespace

namespace MK_FELSPAR {

bool WriteFile(const char* directory, const char* filename, const char* text, int mode) {
    try {
        if (const fs::path folder = empty_if_null(directory); !fs::exists(folder))
            fs::create_directories(folder);
        const fs::path file = join(directory, filename);
        switch (mode) {
        case 0:
            return write(file, empty_if_null(text), std::ios::trunc);
        case 1:
            return write(free_name(file), empty_if_null(text), std::ios::trunc);
        case 2:
            return write(file, empty_if_null(text), std::ios::app);
        default:
            return false;
        }
    } catch (const std::exception&) {
        return false;
    }
}

bool ReadFile(const char* directory, const char* filename, char* textOutNeedBig, int textOutNeedBig_sz) {
    try {
        const fs::path file = join(directory, filename);
        if (!fs::is_regular_file(file))
            return false;
        std::ifstream stream(file);
        if (!stream)
            return false;
        mk_utility::strcpy(textOutNeedBig, textOutNeedBig_sz,
                           read(stream, static_cast<std::size_t>(std::max(textOutNeedBig_sz, 0))));
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

bool SetCopyFile(const char* copyFilePath, const char* pasteFilePath) {
    try {
        const fs::path from = mk_utility::utf8_to_multi(empty_if_null(copyFilePath));
        const fs::path to = mk_utility::utf8_to_multi(empty_if_null(pasteFilePath));
        if (fs::is_directory(from) && is_within(to, from))
            return false;
        fs::copy(from, to, fs::copy_options::overwrite_existing | fs::copy_options::recursive);
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
    const std::string dotted = "." + extension;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root))
        if (mk_utility::Stricmp(entry.path().extension().c_str(), dotted.c_str()))
            paths.push_back(mk_utility::multi_to_utf8(entry.path().string()));
    return true;
}

int GetPathInfo(const std::string& filePath, mk_object::mk_Path& pathInfo) {
    return pathInfo.read_path(filePath);
}

} // namespace mk_api::path
