#include "system/shell.hpp"

#include "system/windows/wide_text.hpp"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

namespace {

/// With its full path, so that no program of that name in another folder runs.
std::wstring command_interpreter() {
    wchar_t folder[MAX_PATH] = L"";
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    return std::wstring(folder, length) + L"\\cmd.exe";
}

} // namespace

bool shell::run(const std::string& command) {
    const std::wstring interpreter = command_interpreter();
    std::wstring line = L"cmd.exe /d /s /c \"" + wide_text(command) + L"\"";
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(interpreter.c_str(), line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr,
                        nullptr, &start, &process))
        return false;
    WaitForSingleObject(process.hProcess, INFINITE);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}
