#include "headless/system/program.hpp"

#include "common/path_text.hpp"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <string_view>
#include <windows.h>
// after windows.h
#include <shellapi.h>

namespace headless::system {
namespace {

void understand_escapes(DWORD stream) {
    const HANDLE console = GetStdHandle(stream);
    DWORD mode = 0;
    if (GetConsoleMode(console, &mode))
        SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

} // namespace

std::filesystem::path program_file() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(2 * path.size());
    }
}

// Those of main() are in the system's code page.
std::vector<std::string> arguments(int, char**) {
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int index = 1; words && index < count; ++index)
        arguments.push_back(path_text::text_of(words[index]));
    LocalFree(words);
    return arguments;
}

std::string environment_variable(const char* name) {
    const wchar_t* const value = _wgetenv(path_text::path_of(name).c_str());
    return value ? path_text::text_of(value) : "";
}

void use_utf8_streams() {
    for (std::FILE* stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    SetConsoleCP(CP_UTF8);
    SetConsoleOutputCP(CP_UTF8);
    understand_escapes(STD_OUTPUT_HANDLE);
    understand_escapes(STD_ERROR_HANDLE);
}

} // namespace headless::system
