#include "common/folder_entries.hpp"

#include "common/path_text.hpp"
#include "common/windows/error_number.hpp"

#include <memory>
#include <optional>
#include <string_view>
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace folder_entries {
namespace {

struct Close {
    void operator()(void* search) const { FindClose(search); }
};

/// Junctions and symbolic links stand for another folder; files and folders of a cloud only for themselves.
bool is_link(const WIN32_FIND_DATAW& entry) {
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           IsReparseTagNameSurrogate(entry.dwReserved0);
}

bool is_folder(const WIN32_FIND_DATAW& entry) {
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && !is_link(entry);
}

std::error_code generic_error(DWORD code) {
    if (code == ERROR_SUCCESS || code == ERROR_NO_MORE_FILES ||
        code == ERROR_FILE_NOT_FOUND) // an empty drive
        return {};
    return {error_number::of(code), std::generic_category()};
}

/// Nothing if the name has half of a surrogate pair, and so no UTF-8 form.
std::optional<std::string> text_of(std::wstring_view name) {
    try {
        return path_text::text_of(name);
    } catch (const std::filesystem::filesystem_error&) {
        return std::nullopt;
    }
}

} // namespace

std::vector<Entry> read(const std::filesystem::path& folder, std::error_code& error) {
    if (folder.empty()) { // the system would read the current one
        error = std::make_error_code(std::errc::no_such_file_or_directory);
        return {};
    }
    WIN32_FIND_DATAW entry{};
    void* const first = FindFirstFileW((folder / L"*").c_str(), &entry);
    error = generic_error(first == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS);
    std::vector<Entry> entries;
    if (first == INVALID_HANDLE_VALUE)
        return entries;
    const std::unique_ptr<void, Close> search(first);
    do {
        std::optional<std::string> name = text_of(entry.cFileName);
        if (name && *name != "." && *name != "..")
            entries.push_back({*std::move(name), is_folder(entry)});
    } while (FindNextFileW(search.get(), &entry));
    error = generic_error(GetLastError());
    return entries;
}

} // namespace folder_entries
