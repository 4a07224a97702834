// Host functions about the system around the workstation: programs, clipboard, audio devices, texts by handle.

#include "headless/base/child_process.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"

#include <chrono>
#include <optional>
#include <string>

namespace headless::functions {
namespace {

/// @param limit_milliseconds 0: none; below 0 nobody waits for the program
const char* run_program(const char* command_line, int limit_milliseconds) {
    static thread_local std::string answer;
    const auto words = command_words(workstation::to_string(command_line));
    if (limit_milliseconds < 0) {
        answer.clear();
        return start_process(words) ? answer.c_str() : nullptr;
    }
    const auto limit =
        limit_milliseconds > 0 ? std::optional(std::chrono::milliseconds(limit_milliseconds)) : std::nullopt;
    const auto result = run_process(words, limit);
    if (!result)
        return nullptr;
    answer = std::to_string(result->status) + '\n' + result->output;
    return answer.c_str();
}

void set_clipboard(Workstation& workstation, const char* text) {
    workstation.session.clipboard = workstation::to_string(text);
}

void get_clipboard(Workstation& workstation, char* text, int text_size) {
    workstation::copy_text(workstation.session.clipboard, text, text_size);
}

bool open_with_desktop(const char*, const char*) { return false; }

const char* localize(const char* text, const char*, int) { return text; }

bool get_device_info(const char*, char* text, int text_size) {
    workstation::copy_text("", text, text_size);
    return false;
}

using workstation::FastString;

FastString* create_string(Workstation& workstation, const char* text) {
    return &workstation.fast_strings.create(workstation::to_string(text));
}

const char* get_string(const FastString& string) { return string.text.c_str(); }

int get_string_length(const FastString& string) { return static_cast<int>(string.text.size()); }

FastString* set_string(FastString& string, const char* text) {
    string.text = workstation::to_string(text);
    return &string;
}

void delete_string(Workstation& workstation, const FastString& string) {
    workstation.fast_strings.erase(string);
}

} // namespace

std::span<const workstation::HostFunction> system_functions() {
    static const workstation::HostFunction table[] = {
        {"ExecProcess",
         host_function<run_program>("cmdline,timeoutmsec",
                                    "Runs a program: exit status, line break and output; nil if it cannot be "
                                    "started or takes too long. 0 waits for ever, below 0 nobody waits")},
        {"CF_SetClipboard", host_function<set_clipboard>("str", "Keeps a text while the workstation runs")},
        {"CF_GetClipboard", host_function<get_clipboard>("textOutNeedBig,textOutNeedBig_sz",
                                                         "The text that CF_SetClipboard has kept")},
        {"CF_ShellExecute",
         host_function<open_with_desktop>("file,argsOptional", "There is no desktop here: false")},
        {"LocalizeString",
         host_function<localize>("src_string,section,flagsOptional", "The text, which is never translated")},
        {"GetAudioDeviceInfo", host_function<get_device_info>("attribute,descOut,descOut_sz",
                                                              "There is no audio device here: false")},
        {"SNM_CreateFastString", host_function<create_string>("str", "Makes a text of any length")},
        {"SNM_GetFastString", host_function<get_string>("str", "The text")},
        {"SNM_GetFastStringLength", host_function<get_string_length>("str", "The text's length in bytes")},
        {"SNM_SetFastString", host_function<set_string>("str,newstr", "Changes the text, and returns it")},
        {"SNM_DeleteFastString", host_function<delete_string>("str", "Deletes the text")},
    };
    return table;
}

} // namespace headless::functions
