#include "headless/workstation/dialogs.hpp"

#include "common/letter_case.hpp"

#include <algorithm>
#include <array>
#include <istream>
#include <ostream>
#include <span>

namespace headless::workstation {
namespace {

constexpr std::array<std::string_view, 8> button_names{"",      "OK",     "Cancel", "Abort",
                                                       "Retry", "Ignore", "Yes",    "No"};

struct BoxType {
    std::array<int, 3> buttons; // 0: no button
    int default_button;
};

constexpr std::array<BoxType, 6> box_types{{
    {{1, 0, 0}, 1},
    {{1, 2, 0}, 2},
    {{3, 4, 5}, 5},
    {{6, 7, 2}, 2},
    {{6, 7, 0}, 7},
    {{4, 2, 0}, 2},
}};

constexpr BoxType unknown_box{{1, 2, 0}, 2};

const BoxType& box_type(int type) {
    return type >= 0 && static_cast<std::size_t>(type) < box_types.size()
               ? box_types[static_cast<std::size_t>(type)]
               : unknown_box;
}

bool begins_like(std::string_view name, std::string_view answer) {
    return !answer.empty() && letter_case::lowered(name).starts_with(letter_case::lowered(answer));
}

std::string choices(const BoxType& type) {
    std::string text;
    for (const int button : type.buttons)
        if (button != 0)
            text.append(text.empty() ? "" : "/").append(button_name(button));
    return text;
}

} // namespace

int default_button(int type) { return box_type(type).default_button; }

std::string_view button_name(int button) { return button_names.at(static_cast<std::size_t>(button)); }

std::optional<int> button_for(std::string_view answer, int type) {
    for (const int button : box_type(type).buttons)
        if (button != 0 && begins_like(button_name(button), answer))
            return button;
    return std::nullopt;
}

int ask_button(std::istream& input, std::ostream& output, std::string_view text, std::string_view title,
               int type) {
    output << title << "\n" << text << "\n";
    std::string answer;
    while (output << "[" << choices(box_type(type)) << "] " << std::flush && std::getline(input, answer))
        if (const auto button = button_for(answer, type))
            return *button;
    output << '\n';
    return default_button(type);
}

bool ask_fields(std::istream& input, std::ostream& output, std::string_view title,
                std::vector<FormField>& fields) {
    output << title << "\n";
    for (FormField& field : fields) {
        output << field.caption << " [" << field.value << "]: " << std::flush;
        std::string answer;
        if (!std::getline(input, answer)) {
            output << '\n';
            return false;
        }
        if (!answer.empty())
            field.value = answer;
    }
    return true;
}

std::optional<std::string> DialogAnswers::next(const std::string& title) {
    const auto found = answers_.find(title);
    if (found == answers_.end())
        return std::nullopt;
    auto& [answers, times_asked] = found->second;
    return answers[std::min(times_asked++, answers.size() - 1)];
}

std::vector<std::string> DialogAnswers::never_asked() const {
    std::vector<std::string> titles;
    for (const auto& [title, given] : answers_)
        if (given.times_asked == 0)
            titles.push_back(title);
    return titles;
}

} // namespace headless::workstation
