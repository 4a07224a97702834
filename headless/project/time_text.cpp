#include "headless/project/time_text.hpp"

#include "headless/base/decimal.hpp"
#include "headless/project/project.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace headless::project {
namespace {

[[gnu::format(printf, 1, 2)]] std::string print(const char* format, ...) {
    std::array<char, 128> text{};
    va_list values;
    va_start(values, format);
    std::vsnprintf(text.data(), text.size(), format, values);
    va_end(values);
    return text.data();
}

// A time that counts of samples can hold.
double bounded(double seconds) {
    constexpr double thirty_thousand_years = 1e12;
    return std::isnan(seconds) ? 0.0 : std::clamp(seconds, -thirty_thousand_years, thirty_thousand_years);
}

std::int64_t rounded_down(double value) {
    constexpr double hair = 1e-4; // a time that was itself reckoned from frames may lie just below
    return static_cast<std::int64_t>(std::floor(value + hair));
}

/// Frames that are counted so many a second: as many as the rate, rounded up.
class Timecode {
public:
    explicit Timecode(const Project& project)
        : a_second_(std::max(std::llround(exact_frame_rate(project)), 1LL)),
          dropped_(project.drop_frame ? a_second_ / 15 : 0) {}

    std::string text(std::int64_t frames) const {
        const std::int64_t number = with_dropped(frames);
        const auto seconds = number / a_second_;
        return print("%02d:%02d:%02d:%02d", static_cast<int>(seconds / 3600),
                     static_cast<int>(seconds / 60 % 60), static_cast<int>(seconds % 60),
                     static_cast<int>(number % a_second_));
    }

    double frames(const std::vector<double>& hours_to_frames) const {
        std::array<double, 4> parts{};
        const std::size_t count = std::min(hours_to_frames.size(), parts.size());
        std::copy(hours_to_frames.end() - static_cast<std::ptrdiff_t>(count), hours_to_frames.end(),
                  parts.end() - static_cast<std::ptrdiff_t>(count));
        const double minutes = parts[0] * 60.0 + parts[1];
        const double number = (minutes * 60.0 + parts[2]) * static_cast<double>(a_second_) + parts[3];
        return number - static_cast<double>(dropped_) * (minutes - std::floor(minutes / 10.0));
    }

private:
    // Drop frame leaves out the first numbers of each minute, but of every tenth.
    std::int64_t with_dropped(std::int64_t frames) const {
        const std::int64_t a_minute = a_second_ * 60 - dropped_;
        const std::int64_t ten_minutes = a_minute * 10 + dropped_;
        const std::int64_t rest = std::max<std::int64_t>(frames % ten_minutes - dropped_, 0);
        return frames + dropped_ * (frames / ten_minutes * 9 + rest / a_minute);
    }

    std::int64_t a_second_;
    std::int64_t dropped_;
};

std::string timecode_text(const Project& project, double seconds) {
    const std::int64_t frames = rounded_down(std::abs(seconds) * exact_frame_rate(project));
    return (seconds < 0.0 && frames > 0 ? "-" : "") + Timecode(project).text(frames);
}

/// Measures with beats, both counted from 0.
struct Beats {
    std::int64_t measures;
    double beats;
};

int to_measure(std::int64_t number) {
    constexpr std::int64_t limit = 1'000'000'000;
    return static_cast<int>(std::clamp(number, -limit, limit));
}

std::string beats_text(const Beats& beats, int first) {
    const std::int64_t hundredths = rounded_down(beats.beats * 100.0);
    return std::to_string(beats.measures + first) + '.' + std::to_string(hundredths / 100 + first) +
           print(".%02d", static_cast<int>(hundredths % 100));
}

std::string beats_at(const Project& project, double seconds) {
    const MusicalPosition place = project.tempo_map.position_at(seconds);
    return beats_text({std::int64_t{place.measure} + project.start_measure, place.beat}, 1);
}

std::string beats_between(const Project& project, double from_seconds, double to_seconds) {
    const MusicalPosition from = project.tempo_map.position_at(from_seconds);
    const MusicalPosition to = project.tempo_map.position_at(to_seconds);
    Beats length{std::int64_t{to.measure} - from.measure, to.beat - from.beat};
    constexpr double hair = 1e-6;
    if (length.beats < -hair) {
        length.measures -= 1;
        length.beats += project.tempo_map.measure(to.measure - 1).meter.numerator;
    }
    return beats_text({length.measures, std::max(length.beats, 0.0)}, 0);
}

/// In all units but beats.
std::string plain_text(const Project& project, double seconds, RulerMode mode) {
    switch (mode) {
    case RulerMode::seconds:
        return print("%.3f", seconds);
    case RulerMode::samples:
        return print("%lld", std::llround(seconds * project.sample_rate));
    case RulerMode::timecode:
        return timecode_text(project, seconds);
    case RulerMode::frames:
        return print("%lld", static_cast<long long>(rounded_down(seconds * exact_frame_rate(project))));
    default:
        return clock_text(seconds);
    }
}

bool shows_beats(RulerMode mode) { return mode == RulerMode::beats || mode == RulerMode::short_beats; }

bool shows_beats_and_time(RulerMode mode) {
    return mode == RulerMode::beats_and_time || mode == RulerMode::short_beats_and_time;
}

double parse_number(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t+"), text.size()));
    return bounded(read_decimal(text).value_or(DecimalReading{}).value);
}

std::vector<double> parse_parts(std::string_view text, char separator) {
    std::vector<double> parts;
    for (std::size_t end = 0; end != std::string_view::npos; text.remove_prefix(end + 1)) {
        end = text.find(separator);
        parts.push_back(parse_number(text.substr(0, end)));
        if (end == std::string_view::npos)
            break;
    }
    return parts;
}

// Takes a minus off the front.
double take_sign(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const bool is_negative = text.starts_with('-');
    text.remove_prefix(is_negative ? 1 : 0);
    return is_negative ? -1.0 : 1.0;
}

/// In all units but beats.
double parse_plain(const Project& project, std::string_view text, RulerMode mode) {
    switch (mode) {
    case RulerMode::samples:
        return project.sample_rate > 0 ? parse_number(text) / project.sample_rate : 0.0;
    case RulerMode::timecode: {
        const double sign = take_sign(text);
        return sign * Timecode(project).frames(parse_parts(text, ':')) / exact_frame_rate(project);
    }
    case RulerMode::frames:
        return parse_number(text) / exact_frame_rate(project);
    default:
        return parse_clock(text);
    }
}

/// Measures, beats and hundredths; parts that are missing are `first`.
Beats parse_beats(std::string_view text, int first) {
    const double sign = take_sign(text);
    const std::vector<double> parts = parse_parts(text, '.');
    const double beat = parts.size() > 1 ? parts[1] : first;
    const double hundredths = parts.size() > 2 ? parts[2] : 0.0;
    constexpr double limit = 1e9;
    return {static_cast<std::int64_t>(std::clamp(sign * parts[0], -limit, limit)) - first,
            beat - first + hundredths / 100.0};
}

/// Whether a text of beats, of time, or of both is to be read as beats; `text` is then only that.
bool is_beats(std::string_view& text, RulerMode mode) {
    if (shows_beats_and_time(mode)) {
        const bool has_both = text.find('/') != std::string_view::npos;
        text = text.substr(0, text.find('/'));
        return has_both || text.find(':') == std::string_view::npos;
    }
    return shows_beats(mode);
}

} // namespace

double exact_frame_rate(const Project& project) {
    constexpr double most = 1e6;
    const double rate = project.frame_rate > 0.0 && project.frame_rate <= most ? project.frame_rate : 24.0;
    const double whole = std::max(std::round(rate), 1.0);
    const double slowed = whole * 1000.0 / 1001.0;
    return project.drop_frame || std::abs(rate - slowed) < 0.01 ? slowed : rate;
}

std::optional<RulerMode> ruler_of(const Project& project, int number) {
    if (number == -1)
        return project.ruler_mode;
    if (number < 0 || number > static_cast<int>(RulerMode::frames))
        return std::nullopt;
    return static_cast<RulerMode>(number);
}

std::string clock_text(double seconds) {
    const auto milliseconds = std::llround(std::abs(bounded(seconds)) * 1000.0);
    const char* sign = seconds < 0.0 && milliseconds > 0 ? "-" : "";
    const auto minutes = milliseconds / 60'000;
    const double rest = static_cast<double>(milliseconds % 60'000) / 1000.0;
    return minutes < 60 ? print("%s%lld:%06.3f", sign, minutes, rest)
                        : print("%s%lld:%02lld:%06.3f", sign, minutes / 60, minutes % 60, rest);
}

std::string position_text(const Project& project, double seconds, RulerMode mode) {
    const double at = bounded(seconds);
    const double shown = at + project.start_seconds;
    if (shows_beats(mode))
        return beats_at(project, at);
    if (shows_beats_and_time(mode))
        return beats_at(project, at) + " / " + clock_text(shown);
    return plain_text(project, shown, mode);
}

std::string length_text(const Project& project, double length_seconds, double from_seconds, RulerMode mode) {
    const double length = bounded(length_seconds);
    const double from = bounded(from_seconds);
    if (shows_beats(mode))
        return beats_between(project, from, from + length);
    if (shows_beats_and_time(mode))
        return beats_between(project, from, from + length) + " / " + clock_text(length);
    return plain_text(project, length, mode);
}

double parse_clock(std::string_view text) {
    const double sign = take_sign(text);
    double seconds = 0.0;
    for (const double part : parse_parts(text, ':'))
        seconds = seconds * 60.0 + part;
    return sign * seconds;
}

double parse_position(const Project& project, std::string_view text, RulerMode mode) {
    if (!is_beats(text, mode))
        return parse_plain(project, text, mode) - project.start_seconds;
    const Beats place = parse_beats(text, 1);
    return project.tempo_map.seconds_at_beats(to_measure(place.measures - project.start_measure),
                                              place.beats);
}

double parse_length(const Project& project, std::string_view text, double from_seconds, RulerMode mode) {
    if (!is_beats(text, mode))
        return parse_plain(project, text, mode);
    const Beats length = parse_beats(text, 0);
    const MusicalPosition from = project.tempo_map.position_at(bounded(from_seconds));
    return project.tempo_map.seconds_at_beats(to_measure(from.measure + length.measures),
                                              from.beat + length.beats) -
           bounded(from_seconds);
}

} // namespace headless::project
