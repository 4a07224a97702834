#include "headless/system/process.hpp"

#include "common/path_text.hpp"
#include "headless/system/program.hpp"

#include <algorithm>
#include <array>
#include <thread>
#include <utility>
#include <windows.h>

namespace headless::system {
namespace {

HANDLE handle(std::intptr_t number) { return reinterpret_cast<HANDLE>(number); }

/// A word as programs split their command line: quotes and the backslashes before them are escaped.
std::wstring quoted(const std::wstring& word) {
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t c : word) {
        if (c == L'"')
            text.append(backslashes + 1, L'\\');
        backslashes = c == L'\\' ? backslashes + 1 : 0;
        text += c;
    }
    return text.append(backslashes, L'\\') + L'"';
}

std::wstring command_line(const std::vector<std::string>& words) {
    std::wstring line;
    for (const std::string& word : words)
        line.append(line.empty() ? L"" : L" ").append(quoted(path_text::path_of(word).native()));
    return line;
}

/// The file of a program in PATH; empty if there is none. CreateProcess would look into other folders first.
std::wstring file_in_path(const std::wstring& name) {
    const std::wstring folders = path_text::path_of(environment_variable("PATH")).native();
    std::wstring file;
    DWORD size = 0;
    do { // a call that finds too little room tells the size
        file.resize(size);
        size = SearchPathW(folders.c_str(), name.c_str(), L".exe", static_cast<DWORD>(file.size()),
                           file.data(), nullptr);
    } while (size > file.size());
    file.resize(size);
    return file;
}

struct Command {
    std::wstring file;
    std::wstring line;
};

Command command_of(const std::vector<std::string>& words) {
    if (words.empty())
        return {};
    const std::filesystem::path program = path_text::path_of(words.front());
    return {program.has_parent_path() ? program.native() : file_in_path(program.native()),
            command_line(words)};
}

/// @param output  becomes the standard output
/// @returns null if the program cannot be started
HANDLE spawn(Command command, HANDLE output) {
    if (command.file.empty())
        return nullptr;
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const HANDLE nothing = CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited,
                                       OPEN_EXISTING, 0, nullptr);
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdInput = nothing;
    start.hStdOutput = output;
    start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION started{};
    const bool is_started = CreateProcessW(command.file.c_str(), command.line.data(), nullptr, nullptr, TRUE,
                                           0, nullptr, nullptr, &start, &started) != 0;
    CloseHandle(nothing);
    if (!is_started)
        return nullptr;
    CloseHandle(started.hThread);
    return started.hProcess;
}

} // namespace

std::int64_t process_number() { return GetCurrentProcessId(); }

std::optional<ChildProcess> ChildProcess::start(const std::vector<std::string>& words, Output output) {
    Command command = command_of(words); // before there are handles, as it may throw
    HANDLE reading = INVALID_HANDLE_VALUE;
    HANDLE writing = GetStdHandle(STD_OUTPUT_HANDLE);
    if (output == Output::piped) {
        if (!CreatePipe(&reading, &writing, nullptr, 0))
            return std::nullopt;
        SetHandleInformation(writing, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    }
    const HANDLE child = spawn(std::move(command), writing);
    if (output == Output::piped)
        CloseHandle(writing);
    if (child)
        return ChildProcess(reinterpret_cast<std::intptr_t>(child), reinterpret_cast<std::intptr_t>(reading));
    if (output == Output::piped)
        CloseHandle(reading);
    return std::nullopt;
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : process_(std::exchange(other.process_, 0)), output_(std::exchange(other.output_, -1)) {}

ChildProcess::~ChildProcess() {
    close_output();
    if (process_ != 0)
        CloseHandle(handle(process_));
}

// A pipe cannot be waited for, so it is asked again and again.
ChildProcess::Reading ChildProcess::read_output(std::string& output, std::chrono::milliseconds patience) {
    constexpr std::chrono::milliseconds pause{5};
    std::array<char, 65536> block{};
    DWORD waiting = 0;
    for (auto waited = std::chrono::milliseconds::zero(); waiting == 0; waited += pause) {
        if (!PeekNamedPipe(handle(output_), nullptr, 0, nullptr, &waiting, nullptr))
            return GetLastError() == ERROR_BROKEN_PIPE ? Reading::end : Reading::failed;
        if (waiting == 0 && waited >= patience)
            return Reading::nothing_yet;
        if (waiting == 0)
            std::this_thread::sleep_for(pause);
    }
    DWORD got = 0;
    if (!ReadFile(handle(output_), block.data(), static_cast<DWORD>(block.size()), &got, nullptr))
        return GetLastError() == ERROR_BROKEN_PIPE ? Reading::end : Reading::failed;
    output.append(block.data(), got);
    return Reading::bytes;
}

void ChildProcess::close_output() {
    if (const std::intptr_t output = std::exchange(output_, -1); output != -1)
        CloseHandle(handle(output));
}

void ChildProcess::kill() {
    constexpr UINT as_by_a_signal = 128 + 9;
    TerminateProcess(handle(process_), as_by_a_signal);
}

int ChildProcess::wait() {
    DWORD status = 0;
    WaitForSingleObject(handle(process_), INFINITE);
    GetExitCodeProcess(handle(process_), &status);
    return static_cast<int>(status);
}

} // namespace headless::system
