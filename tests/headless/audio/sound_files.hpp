#pragma once
// Sound files that the tests make, in a folder that goes with the test.

#include <sndfile.h>

#include <atomic>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numbers>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace headless::test {

/// An empty folder, removed with all that is in it at the end.
class ScratchFolder {
public:
    ScratchFolder() {
        static std::atomic<int> serial{0};
        path = std::filesystem::temp_directory_path() /
               ("felspar test " + std::to_string(getpid()) + "-" + std::to_string(serial++));
        std::filesystem::create_directories(path);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::filesystem::path operator/(const std::string& name) const { return path / name; }

    std::size_t entry_count() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(path), std::filesystem::directory_iterator()));
    }

    std::filesystem::path path;
};

inline constexpr int float_wav = SF_FORMAT_WAV | SF_FORMAT_FLOAT;

inline std::filesystem::path write_sound(const std::filesystem::path& file, const std::vector<float>& samples,
                                         int sample_rate, int channels = 1, int format = float_wav) {
    SF_INFO info{};
    info.samplerate = sample_rate;
    info.channels = channels;
    info.format = format;
    SNDFILE* handle = sf_open(file.c_str(), SFM_WRITE, &info);
    if (handle == nullptr) {
        throw std::runtime_error(sf_strerror(nullptr));
    }
    const auto count = static_cast<sf_count_t>(samples.size());
    const bool is_whole = sf_write_float(handle, samples.data(), count) == count;
    if (sf_close(handle) != 0 || !is_whole) {
        throw std::runtime_error("cannot write " + file.string());
    }
    return file;
}

/// A sine of that peak, the same in all channels, interleaved.
inline std::vector<float> tone(double seconds, double peak, int sample_rate, int channels = 1,
                               double hertz = 1000.0) {
    std::vector<float> samples;
    const auto frames = std::llround(seconds * sample_rate);
    for (std::int64_t frame = 0; frame < frames; ++frame) {
        const double phase = 2.0 * std::numbers::pi * hertz * static_cast<double>(frame) / sample_rate;
        samples.insert(samples.end(), static_cast<std::size_t>(channels),
                       static_cast<float>(peak * std::sin(phase)));
    }
    return samples;
}

inline std::vector<float> silence(double seconds, int sample_rate, int channels = 1) {
    return std::vector<float>(static_cast<std::size_t>(std::llround(seconds * sample_rate) * channels));
}

/// Repeatable noise, evenly spread within +-peak.
inline std::vector<float> noise(std::size_t samples, double peak, std::uint32_t seed = 1) {
    std::vector<float> values(samples);
    for (float& value : values) {
        seed = seed * 1664525U + 1013904223U;
        value = static_cast<float>(peak * (static_cast<double>(seed) / 2147483648.0 - 1.0));
    }
    return values;
}

inline std::vector<float> operator+(std::vector<float> left, const std::vector<float>& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

inline std::string bytes_of(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline void write_bytes(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream(file, std::ios::binary) << bytes;
}

} // namespace headless::test
