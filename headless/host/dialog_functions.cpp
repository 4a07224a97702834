// Host functions that ask the user: on the terminal when there is one, else with a default that is told.

#include "headless/host/dialogs.hpp"
#include "headless/host/door.hpp"
#include "headless/host/text.hpp"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <string>
#include <unistd.h>
#include <vector>

namespace headless {
namespace {

constexpr int most_fields = 16;

bool has_terminal() { return isatty(STDIN_FILENO) == 1 && isatty(STDERR_FILENO) == 1; }

std::string on_one_line(std::string text) {
    std::ranges::replace_if(
        text, [](char byte) { return static_cast<unsigned char>(byte) < 0x20U; }, ' ');
    return text;
}

int show_message_box(Workstation&, const char* text, const char* title, int type) {
    if (has_terminal()) {
        return ask_button(std::cin, std::cerr, to_string(text), to_string(title), type);
    }
    const int button = default_button(type);
    std::cerr << on_one_line(to_string(title) + ": " + to_string(text)) << " [answered "
              << button_name(button) << ", as there is no terminal]\n";
    return button;
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + 1) {
        end = text.find(separator, begin);
        parts.push_back(text.substr(begin, end == std::string::npos ? end : end - begin));
    }
    return parts;
}

// Trailing captions may be settings; of these only the separator of the values matters here.
char value_separator(const std::vector<std::string>& captions) {
    const std::string key = "separator=";
    for (const std::string& caption : captions) {
        if (caption.starts_with(key) && caption.size() > key.size()) {
            return caption[key.size()];
        }
    }
    return ',';
}

std::string part_or_empty(const std::vector<std::string>& parts, std::size_t index) {
    return index < parts.size() ? parts[index] : "";
}

bool get_user_inputs(Workstation&, const char* title, int field_count, const char* captions_csv,
                     char* values_csv, int values_size) {
    if (field_count < 1 || field_count > most_fields || !values_csv || values_size < 1) {
        return false;
    }
    if (!has_terminal()) {
        std::cerr << on_one_line(to_string(title)) << " [cancelled, as there is no terminal]\n";
        return false;
    }
    const auto captions = split(to_string(captions_csv), ',');
    const char separator = value_separator(captions);
    const auto values = split(values_csv, separator);
    std::vector<FormField> fields;
    for (std::size_t index = 0; index < static_cast<std::size_t>(field_count); ++index) {
        fields.push_back({part_or_empty(captions, index), part_or_empty(values, index)});
    }
    if (!ask_fields(std::cin, std::cerr, to_string(title), fields)) {
        return false;
    }
    std::string answers;
    for (std::size_t index = 0; index < fields.size(); ++index) {
        answers.append(index == 0 ? "" : std::string(1, separator)).append(fields[index].value);
    }
    copy_text(answers, values_csv, values_size);
    return true;
}

} // namespace

std::span<const HostFunction> dialog_functions() {
    static const HostFunction table[] = {
        host_function<show_message_box>("ShowMessageBox"),
        host_function<get_user_inputs>("GetUserInputs"),
    };
    return table;
}

} // namespace headless
