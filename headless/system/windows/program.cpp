#include "headless/system/program.hpp"

#include "common/path_text.hpp"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <string_view>
#include <windows.h>
// after windows.h
#include <shellapi.h>

namespace headless::system {
namespace {

/// A console that understands escape sequences until this object is destroyed.
class EscapeMode {
public:
    explicit EscapeMode(DWORD stream) : console_(GetStdHandle(stream)) {
        if (GetConsoleMode(console_, &before_))
            SetConsoleMode(console_, before_ | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
        else
            console_ = INVALID_HANDLE_VALUE;
    }
    EscapeMode(const EscapeMode&) = delete;
    EscapeMode& operator=(const EscapeMode&) = delete;
    ~EscapeMode() { SetConsoleMode(console_, before_); }

private:
    HANDLE console_;
    DWORD before_ = 0;
};

/// The console's code pages are UTF-8 until this object is destroyed.
class Utf8CodePages {
public:
    Utf8CodePages() {
        SetConsoleCP(CP_UTF8);
        SetConsoleOutputCP(CP_UTF8);
    }
    Utf8CodePages(const Utf8CodePages&) = delete;
    Utf8CodePages& operator=(const Utf8CodePages&) = delete;
    ~Utf8CodePages() {
        SetConsoleCP(input_before_);
        SetConsoleOutputCP(output_before_);
    }

private:
    UINT input_before_ = GetConsoleCP();
    UINT output_before_ = GetConsoleOutputCP();
};

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
    const std::filesystem::path wide_name = path_text::path_of(name);
    std::wstring value;
    // The first call tells the size with the final zero, one that succeeds the size without it.
    while (const DWORD size =
               GetEnvironmentVariableW(wide_name.c_str(), value.data(), static_cast<DWORD>(value.size()))) {
        const bool is_complete = size < value.size();
        value.resize(size);
        if (is_complete)
            return path_text::text_of(value);
    }
    return "";
}

void use_utf8_streams() {
    for (std::FILE* stream : {stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    static const Utf8CodePages code_pages;
    static const EscapeMode output(STD_OUTPUT_HANDLE);
    static const EscapeMode errors(STD_ERROR_HANDLE);
}

} // namespace headless::system
