#include "system/desktop.hpp"

#include "system/windows/wide_text.hpp"

#define WIN32_LEAN_AND_MEAN
#include <windows.h>
// after windows.h
#include <shellapi.h>

namespace desktop {
namespace {

UINT style_of(const Dialog& dialog) {
    const UINT modal = MB_TASKMODAL | MB_SETFOREGROUND;
    if (dialog.asks_yes_or_no)
        return modal | MB_YESNO | MB_ICONQUESTION;
    return modal | MB_OK | (dialog.is_error ? MB_ICONERROR : MB_ICONINFORMATION);
}

} // namespace

int show(const Dialog& dialog) {
    constexpr int cannot_show = -1;
    const int button = MessageBoxW(nullptr, wide_text(dialog.message).c_str(),
                                   wide_text(dialog.title).c_str(), style_of(dialog));
    if (button == 0)
        return cannot_show;
    return button == IDOK ? 0 : button; // yes and no have the host's codes
}

void open_web_address(const std::string& address) {
    ShellExecuteW(nullptr, L"open", wide_text(address).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

// The system writes "ja-JP", and after an underscore how to sort.
std::string locale_name() {
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = L"";
    GetUserDefaultLocaleName(name, LOCALE_NAME_MAX_LENGTH);
    std::string locale;
    for (const wchar_t* letter = name; *letter && *letter != L'_'; ++letter)
        locale += *letter == L'-' ? '_' : static_cast<char>(*letter);
    return locale;
}

} // namespace desktop
