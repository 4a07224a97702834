#include "utility/mk_utility.hpp"

#include "common/letter_case.hpp"
#include "system/shell.hpp"
#include "utility/message_catalogue.hpp"
#include "utility/safe_regex.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace {

// The scale is an int of 32 bits, so 10^9 is the largest power that fits.
bool can_scale(int digits) { return digits >= 0 && digits <= 9; }

/// What std::round is meant to give: that of mingw-w64 rounds the number below one half up.
double round_half_away(double value) {
    const double whole = std::trunc(value);
    return std::fabs(value - whole) >= 0.5 ? whole + std::copysign(1.0, value) : whole;
}

template <class... Values>
std::string print(const char* format, Values... values) {
    const int length = std::snprintf(nullptr, 0, format, values...);
    if (length < 0)
        return {};
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::snprintf(text.data(), text.size(), format, values...);
    text.pop_back();
    return text;
}

} // namespace

void mk_utility::strcpy(char* dest, int size, std::string src) {
    if (!dest || size <= 0)
        return;
    const std::size_t length = std::min(src.size(), static_cast<std::size_t>(size) - 1);
    std::copy_n(src.data(), length, dest);
    dest[length] = '\0';
}

bool mk_utility::Stricmp(const char* a, const char* b) {
    return a && b &&
           std::ranges::equal(std::string_view(a), std::string_view(b), {}, letter_case::to_lower,
                              letter_case::to_lower);
}

double mk_utility::round(double value, int digits) {
    if (!can_scale(digits))
        return value;
    const double scale = std::pow(10.0, digits);
    return round_half_away(value * scale) / scale;
}

double mk_utility::round_up(double value, int digits) {
    if (!can_scale(digits))
        return value;
    const double scale = std::pow(10.0, digits);
    return std::ceil(value * scale) / scale;
}

double mk_utility::to_reaper_volume(double decibels) { return std::exp(decibels * nepers_per_decibel); }

double mk_utility::to_dB(double linear) { return 20.0 * std::log10(linear); }

bool mk_utility::match_intail(const std::string& text, const std::string& tail) {
    return matches_whole(text, ".+" + tail, LetterCase::is_ignored);
}

std::string mk_utility::multi_to_utf8(const std::string& text) { return text; }

std::string mk_utility::utf8_to_multi(const std::string& text) { return text; }

// The formats are this library's own templates. External callers are responsible for their own.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
#pragma GCC diagnostic ignored "-Wformat-security"
std::string mk_utility::format(const char* format, const char* value) { return print(format, value); }

std::string mk_utility::format(const char* format, const char* first, const char* second, const char* third) {
    return print(format, first, second, third);
}
#pragma GCC diagnostic pop

int mk_utility::exec_command(std::string& command) { return shell::run(command) ? 0 : 1; }

std::pair<std::string, std::string> mk_utility::split_extension(std::string path) {
    const std::size_t dot = path.rfind('.');
    if (dot == std::string::npos || path.find_first_of("\r\n") != std::string::npos)
        return {std::move(path), std::string()};
    return {path.substr(0, dot), path.substr(dot + 1)};
}

void get_version(char* buffer, int size) { mk_utility::strcpy(buffer, size, mk_app_def::VERSION); }
