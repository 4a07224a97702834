#include "headless/system/library.hpp"

#include "common/path_text.hpp"

#include <iterator>
#include <string>
#include <windows.h>

namespace headless::system {

namespace {

/// In the language of the system.
std::string message_of(DWORD code) {
    wchar_t text[512];
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                                  0, text, static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && text[length - 1] <= L' ') // a line end
        --length;
    return length > 0 ? path_text::text_of(std::wstring(text, length)) : "error " + std::to_string(code);
}

} // namespace

std::string_view library_suffix() { return ".dll"; }

void* load_library(const std::filesystem::path& file, std::string& reason) {
    void* library = LoadLibraryExW(std::filesystem::path(file).make_preferred().c_str(), nullptr,
                                   LOAD_WITH_ALTERED_SEARCH_PATH);
    if (!library)
        reason = message_of(GetLastError());
    return library;
}

void* symbol_of(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void unload_library(void* library) { FreeLibrary(static_cast<HMODULE>(library)); }

} // namespace headless::system
