// Rounding, decibels, conversions of numbers and number texts.

#include "utility/numbers.hpp"

#include "api/project/random_numbers.hpp"
#include "tests/platforms/pure_results/results.hpp"
#include "utility/mk_utility.hpp"

#include <cmath>
#include <cstdint>
#include <limits>
#include <numbers>

namespace pure_results {
namespace {

using Doubles = std::numeric_limits<double>;

const double values[] = {0.0,
                         -0.0,
                         0.5,
                         -0.5,
                         1.5,
                         2.5,
                         0.005,
                         1.005,
                         2.675,
                         -2.675,
                         0.125,
                         1.0 / 3.0,
                         -1e-9,
                         0.49999999999999994,
                         1e9 + 0.5,
                         4503599627370495.5,
                         9007199254740993.0,
                         1e300,
                         Doubles::max(),
                         Doubles::denorm_min(),
                         std::numbers::pi,
                         2147483647.5,
                         -2147483648.5,
                         Doubles::infinity(),
                         -Doubles::infinity(),
                         Doubles::quiet_NaN()};

void add_rounding(Results& results) {
    for (const double value : values) {
        std::string line = "round " + shown(value) + ":";
        for (const int digits : {-1, 0, 1, 2, 3, 4, 6, 9, 10})
            line += " " + shown(mk_utility::round(value, digits)) + "|" +
                    shown(mk_utility::round_up(value, digits));
        results.add(line + ", as int " + std::to_string(truncate_to_int(value)) + ", as address " +
                    std::to_string(reinterpret_cast<std::uintptr_t>(handle_from_value<void>(value))));
    }
    Numbers numbers(1);
    for (int left = 100'000; left > 0; --left) {
        const double value = numbers.between(-1000.0, 1000.0);
        const int digits = static_cast<int>(numbers.below(10));
        results.sweep(shown(mk_utility::round(value, digits)));
        results.sweep(shown(mk_utility::round_up(value, digits)));
    }
    results.end_sweep("round");
    for (const double rate : {24000.0 / 1001.0, 25.0, 30000.0 / 1001.0, 44100.0, 48000.0})
        for (int millisecond = 0; millisecond < 20'000; ++millisecond)
            results.sweep(std::to_string(frame_at(rate, millisecond / 1000.0)));
    results.end_sweep("frame_at");
}

void add_decibels(Results& results) {
    for (const double value : values)
        results.add("decibels " + shown(value) + ": " + shown_rounded(mk_utility::to_reaper_volume(value)) +
                    " " + shown_rounded(mk_utility::to_dB(value)));
    for (int step = 1; step < 200'000; ++step) // as volumes of tracks are delivered
        results.sweep(shown(mk_utility::round(mk_utility::to_dB(step / 10000.0), 2)));
    results.end_sweep("to_dB, rounded");
    for (int step = -150'000; step <= 24'000; ++step)
        results.sweep(
            shown(static_cast<double>(static_cast<float>(mk_utility::to_reaper_volume(step / 1000.0)))));
    results.end_sweep("to_reaper_volume, as float");
}

void add_number_texts(Results& results) {
    for (const int number :
         {0, 7, -7, 123456, -123456, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        for (const int digits : {0, 1, 2, 3, 7, 12, 100}) {
            char text[16] = "untouched";
            const bool is_written = MK_FELSPAR::FormatNumDigit(number, digits, text, sizeof text);
            results.add("number " + std::to_string(number) + " " + std::to_string(digits) + ": " +
                        std::to_string(is_written) + " " + shown(text));
        }
}

} // namespace

void add_numbers(Results& results) {
    add_rounding(results);
    add_decibels(results);
    add_number_texts(results);
}

} // namespace pure_results
