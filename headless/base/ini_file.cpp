#include "headless/base/ini_file.hpp"

#include "common/letter_case.hpp"

#include <algorithm>
#include <cstddef>

namespace headless {
namespace {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r\n";
    const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
    text.remove_prefix(begin);
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

bool is_same(std::string_view left, std::string_view right) {
    return letter_case::lowered(trimmed(left)) == letter_case::lowered(trimmed(right));
}

/// Where a key stands, or would have to be inserted.
struct Place {
    std::size_t begin = 0; ///< of its line, otherwise of the first line behind the section's last
    std::size_t end = 0;   ///< of its line, with the line break
    std::string_view value{};
    bool has_key = false;
    bool has_section = false;
};

Place find(std::string_view text, std::string_view section, std::string_view key) {
    Place place{.begin = text.size(), .end = text.size()};
    bool is_inside = false;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size() - 1) + 1;
        const std::string_view line = trimmed(text.substr(begin, end - begin));
        const std::size_t equals = line.find('=');
        if (line.starts_with('[')) {
            if (is_inside)
                break;
            is_inside = is_same(line.substr(1, line.find(']') - 1), section);
            place.has_section = place.has_section || is_inside;
        } else if (is_inside && equals != std::string_view::npos && is_same(line.substr(0, equals), key)) {
            return {begin, end, trimmed(line.substr(equals + 1)), true, true};
        }
        if (is_inside && !line.empty())
            place.begin = place.end = end;
        begin = end;
    }
    return place;
}

} // namespace

std::optional<std::string> ini_value(std::string_view text, std::string_view section, std::string_view key) {
    const Place place = find(text, section, key);
    return place.has_key ? std::optional<std::string>(place.value) : std::nullopt;
}

std::string with_ini_value(std::string_view text, std::string_view section, std::string_view key,
                           std::optional<std::string_view> value) {
    const Place place = find(text, section, key);
    std::string result(text.substr(0, place.begin));
    if (value) {
        if (!result.empty() && !result.ends_with('\n'))
            result += '\n';
        if (!place.has_section)
            result.append("[").append(section).append("]\n");
        result.append(key).append("=").append(*value).append("\n");
    }
    return result.append(text.substr(place.end));
}

} // namespace headless
