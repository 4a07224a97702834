#include "api/project/random_numbers.hpp"

#include "host_api/arguments.hpp"
#include "host_api/host_functions.hpp"
#include "system/random_word.hpp"
#include "utility/mk_utility.hpp"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <string>

namespace MK_FELSPAR {
namespace {

int draw(int low, int high) {
    std::mt19937 generator(random_word());
    const auto [least, most] = std::minmax(low, high);
    return std::uniform_int_distribution(least, most)(generator);
}

bool fits_int(double value) {
    using Limits = std::numeric_limits<int>;
    return value > Limits::min() - 1.0 && value < Limits::max() + 1.0;
}

} // namespace

bool GetRandomNumInteger(int low, int high, int* randomOut) {
    put(randomOut, draw(low, high));
    return true;
}

bool GetRandomNumDouble(double low, double high, int doubleType, double* randomOut) {
    if (doubleType > 9) // 10^9 is the largest power of ten in 32 bits
        return false;
    double scale = 1.0;
    for (int decimal = 0; decimal < doubleType; ++decimal)
        scale *= 10.0;
    if (!fits_int(low * scale) || !fits_int(high * scale))
        return false;
    put(randomOut, draw(static_cast<int>(low * scale), static_cast<int>(high * scale)) / scale);
    return true;
}

bool GetRandomColor(int* colorOut, int* rOut, int* gOut, int* bOut) {
    int r = 0;
    int g = 0;
    int b = 0;
    for (int* part : {&r, &g, &b})
        GetRandomNumInteger(0, 255, part);
    put(rOut, r);
    put(gOut, g);
    put(bOut, b);
    put(colorOut, call(ColorToNative, r, g, b));
    return true;
}

bool FormatNumDigit(int num, int digit, char* formattedNumOut, int formattedNumOut_sz) {
    if (digit < 1)
        return false;
    std::string text = std::to_string(num);
    if (std::ssize(text) < digit) {
        const std::string absolute = std::to_string(std::abs(std::int64_t{num}));
        // No more zeros than the buffer can show.
        const auto zeros =
            std::clamp(digit - static_cast<int>(absolute.size()), 0, std::max(formattedNumOut_sz, 0));
        text = (num < 0 ? "-" : "") + std::string(static_cast<std::size_t>(zeros), '0') + absolute;
    }
    mk_utility::strcpy(formattedNumOut, formattedNumOut_sz, text);
    return true;
}

} // namespace MK_FELSPAR
