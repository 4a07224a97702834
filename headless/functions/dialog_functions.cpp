// Host functions that ask the user. The answer is the one given in advance, otherwise it comes from the
// terminal if there is one, otherwise it is a default, which is reported.

#include "headless/functions/adapter.hpp"
#include "headless/functions/tables.hpp"
#include "headless/system/terminal.hpp"
#include "headless/workstation/dialogs.hpp"
#include "headless/workstation/text.hpp"

#include <algorithm>
#include <cstddef>
#include <iostream>
#include <string>
#include <vector>

namespace headless::functions {
namespace {

constexpr int max_fields = 16;

bool has_terminal() {
    return system::is_terminal(system::standard_input) && system::is_terminal(system::standard_error);
}

std::string on_one_line(std::string text) {
    std::ranges::replace_if(
        text, [](char byte) { return static_cast<unsigned char>(byte) < 0x20U; }, ' ');
    return text;
}

void report_misfit(Workstation& workstation, const std::string& title, const std::string& answer) {
    workstation.report(Failure{"the answer \"" + answer + "\" does not fit the dialog \"" + title + '"'});
}

int show_message_box(Workstation& workstation, const char* text, const char* title, int type) {
    if (const auto answer = workstation.dialog_answers.next(workstation::to_string(title))) {
        const auto button = workstation::button_for(*answer, type);
        if (!button)
            report_misfit(workstation, workstation::to_string(title), *answer);
        return button.value_or(workstation::default_button(type));
    }
    if (has_terminal()) {
        return workstation::ask_button(std::cin, std::cerr, workstation::to_string(text),
                                       workstation::to_string(title), type);
    }
    const int button = workstation::default_button(type);
    std::cerr << on_one_line(workstation::to_string(title) + ": " + workstation::to_string(text))
              << " [answered " << workstation::button_name(button) << ", as there is no terminal]\n";
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

// Trailing captions may be settings; only the separator of the values matters here.
char value_separator(const std::vector<std::string>& captions) {
    const std::string key = "separator=";
    for (const std::string& caption : captions)
        if (caption.starts_with(key) && caption.size() > key.size())
            return caption[key.size()];
    return ',';
}

std::string part_or_empty(const std::vector<std::string>& parts, std::size_t index) {
    return index < parts.size() ? parts[index] : "";
}

struct Form {
    std::vector<workstation::FormField> fields;
    char separator;
};

Form read_form(std::size_t field_count, const char* captions_csv, const char* values_csv) {
    const auto captions = split(workstation::to_string(captions_csv), ',');
    Form form{{}, value_separator(captions)};
    const auto values = split(values_csv, form.separator);
    for (std::size_t index = 0; index < field_count; ++index)
        form.fields.push_back({part_or_empty(captions, index), part_or_empty(values, index)});
    return form;
}

std::string values_of(const Form& form) {
    std::string values;
    for (const workstation::FormField& field : form.fields) {
        values.append(&field == &form.fields.front() ? "" : std::string(1, form.separator))
            .append(field.value);
    }
    return values;
}

// Fields without a value in the answer keep their value.
void fill(Workstation& workstation, const std::string& title, Form& form, const std::string& answer) {
    const auto values = split(answer, form.separator);
    if (values.size() > form.fields.size())
        report_misfit(workstation, title, answer);
    for (std::size_t index = 0; index < std::min(values.size(), form.fields.size()); ++index)
        form.fields[index].value = values[index];
}

bool answer_form(Workstation& workstation, const std::string& title, Form& form) {
    if (const auto answer = workstation.dialog_answers.next(title)) {
        fill(workstation, title, form, *answer);
        return true;
    }
    if (has_terminal())
        return workstation::ask_fields(std::cin, std::cerr, title, form.fields);
    std::cerr << on_one_line(title) << " [cancelled, as there is no terminal]\n";
    return false;
}

bool get_user_inputs(Workstation& workstation, const char* title, int field_count, const char* captions_csv,
                     char* values_csv, int values_size) {
    if (field_count < 1 || field_count > max_fields || !values_csv || values_size < 1)
        return false;
    Form form = read_form(static_cast<std::size_t>(field_count), captions_csv, values_csv);
    if (!answer_form(workstation, workstation::to_string(title), form))
        return false;
    workstation::copy_text(values_of(form), values_csv, values_size);
    return true;
}

/// The answer given in advance, otherwise the line that is typed; empty when cancelled.
std::string ask_path(Workstation& workstation, const char* title, const char* caption, const char* start) {
    Form form{{{caption, workstation::to_string(start)}}, '\n'};
    return answer_form(workstation, workstation::to_string(title), form) ? form.fields.front().value : "";
}

bool get_file_for_reading(Workstation& workstation, char* file, const char* title, const char*) {
    if (!file)
        return false;
    const std::string path = ask_path(workstation, title, "File", file);
    constexpr int path_bytes = 4096;
    if (!path.empty())
        workstation::copy_text(path, file, path_bytes);
    return !path.empty();
}

int browse_for_folder(Workstation& workstation, const char* title, const char* start, char* folder,
                      int folder_size) {
    const std::string path = ask_path(workstation, title, "Folder", start);
    workstation::copy_text(path, folder, folder_size);
    return path.empty() ? 0 : 1;
}

} // namespace

std::span<const workstation::HostFunction> dialog_functions() {
    static const workstation::HostFunction table[] = {
        {"ShowMessageBox",
         host_function<show_message_box>(
             "msg,title,type", "Asks with buttons; 1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No")},
        {"MB",
         host_function<show_message_box>(
             "msg,title,type", "Asks with buttons; 1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No")},
        {"GetUserInputs",
         host_function<get_user_inputs>("title,num_inputs,captions_csv,retvals_csv,retvals_csv_sz",
                                        "Asks for up to 16 values; false when cancelled")},
        {"GetUserFileNameForRead",
         host_function<get_file_for_reading>("filenameNeed4096,title,defext",
                                             "Asks for a file; false when cancelled")},
        {"JS_Dialog_BrowseForFolder",
         host_function<browse_for_folder>("caption,initialFolder,folderOut,folderOut_sz",
                                          "Asks for a folder; 0 when cancelled")},
    };
    return table;
}

} // namespace headless::functions
