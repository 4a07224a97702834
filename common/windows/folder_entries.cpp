#include "common/folder_entries.hpp"

#include "common/path_text.hpp"

#include <cerrno>
#include <memory>
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
    if (code == ERROR_DIRECTORY)
        return std::make_error_code(std::errc::not_a_directory);
    const std::error_condition known = std::system_category().default_error_condition(static_cast<int>(code));
    return {known.category() == std::generic_category() ? known.value() : EIO, std::generic_category()};
}

} // namespace

std::vector<Entry> read(const std::filesystem::path& folder, std::error_code& error) {
    WIN32_FIND_DATAW entry{};
    void* const first = FindFirstFileW((folder / L"*").c_str(), &entry);
    error = generic_error(first == INVALID_HANDLE_VALUE ? GetLastError() : ERROR_SUCCESS);
    std::vector<Entry> entries;
    if (first == INVALID_HANDLE_VALUE)
        return entries;
    const std::unique_ptr<void, Close> search(first);
    do {
        const std::wstring_view name = entry.cFileName;
        if (name != L"." && name != L"..")
            entries.push_back({path_text::text_of(name), is_folder(entry)});
    } while (FindNextFileW(search.get(), &entry));
    error = generic_error(GetLastError());
    return entries;
}

} // namespace folder_entries
