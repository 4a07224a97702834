#include "headless/system/signals.hpp"

#include <atomic>
#include <csignal>
#include <windows.h>

namespace headless::system {
namespace {

std::atomic<void (*)(int)> reaction = nullptr;

BOOL WINAPI handle(DWORD event) {
    const auto react = reaction.exchange(nullptr);
    if (!react)
        return FALSE; // the next handler ends the program
    react(event == CTRL_C_EVENT ? SIGINT : SIGTERM);
    // When the console is closed the system ends the program as soon as this returns.
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
        Sleep(INFINITE);
    return TRUE;
}

} // namespace

void watch_termination(void (*react)(int number)) {
    reaction = react;
    SetConsoleCtrlHandler(handle, TRUE);
}

void ignore_closed_pipes() {} // they are errors of the write, no signals

std::string signal_name(int number) { return number == SIGINT ? "SIGINT" : "SIGTERM"; }

} // namespace headless::system
