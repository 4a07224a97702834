// What the headless host does with a minute of 16-bit mono speech: frames a second of decoding, peaks,
// loudness and rendering. Argument: sample rate. "bare" is libsndfile alone, the measure for the others.

#include "headless/audio/loudness.hpp"
#include "headless/audio/peaks.hpp"
#include "headless/audio/render.hpp"

#include <benchmark/benchmark.h>
#include <sndfile.h>

#include <cmath>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

namespace headless {
namespace {

constexpr int seconds = 60;

const std::filesystem::path folder =
    std::filesystem::temp_directory_path() / ("felspar bench " + std::to_string(getpid()));

struct FolderRemover {
    ~FolderRemover() {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }
} const remover;

// Noise in syllables of a quarter of a second.
std::filesystem::path speech(int sample_rate) {
    auto file = folder / (std::to_string(sample_rate) + ".wav");
    if (std::filesystem::exists(file))
        return file;
    std::filesystem::create_directories(folder);
    std::vector<short> samples(static_cast<std::size_t>(sample_rate) * seconds);
    unsigned seed = 1;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        seed = seed * 1664525U + 1013904223U;
        const double loudness = std::sin(static_cast<double>(i) / sample_rate * 4.0 * 3.14159);
        samples[i] = static_cast<short>(loudness * 0.3 * (static_cast<int>(seed >> 16U) - 32768));
    }
    SF_INFO info{.frames = 0,
                 .samplerate = sample_rate,
                 .channels = 1,
                 .format = SF_FORMAT_WAV | SF_FORMAT_PCM_16,
                 .sections = 0,
                 .seekable = 0};
    SNDFILE* handle = sf_open(file.c_str(), SFM_WRITE, &info);
    sf_write_short(handle, samples.data(), static_cast<sf_count_t>(samples.size()));
    sf_close(handle);
    return file;
}

// A point every 10 ms, as a ride writes them.
audio::GainCurve ride_curve() {
    std::vector<project::EnvelopePoint> points;
    points.reserve(seconds * 100UL);
    for (int i = 0; i < seconds * 100; ++i)
        points.push_back({i * 0.01 + 0.005, 0.7 + 0.3 * std::sin(i)});
    project::Envelope envelope("Volume");
    envelope.set_points(std::move(points));
    return {envelope, 0.0};
}

void count_frames(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0) * seconds);
}

audio::FrameRange whole(const benchmark::State& state) { return {0, state.range(0) * seconds}; }

void bare_decode(benchmark::State& state) {
    const auto file = speech(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        SF_INFO info{};
        SNDFILE* handle = sf_open(file.c_str(), SFM_READ, &info);
        std::vector<float> samples(static_cast<std::size_t>(info.frames));
        benchmark::DoNotOptimize(sf_readf_float(handle, samples.data(), info.frames));
        sf_close(handle);
    }
    count_frames(state);
}

void decode(benchmark::State& state) {
    const auto file = speech(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        audio::AudioCache cache;
        float last = 0.0F;
        benchmark::DoNotOptimize(
            cache.read(file, whole(state), [&](std::span<const float> block) -> Result<void> {
                benchmark::DoNotOptimize(last = block.back());
                return {};
            }));
    }
    count_frames(state);
}

void peaks(benchmark::State& state) {
    const auto file = speech(static_cast<int>(state.range(0)));
    audio::AudioCache cache;
    std::vector<double> maxima(seconds * 1000UL);
    std::vector<double> minima(seconds * 1000UL);
    for (auto _ : state)
        benchmark::DoNotOptimize(audio::measure_peaks(cache, file, audio::PeakRequest{}, maxima, minima));
    count_frames(state);
}

void loudness(benchmark::State& state, const audio::LoudnessRequest& request) {
    const auto file = speech(static_cast<int>(state.range(0)));
    audio::AudioCache cache;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            audio::measure_loudness(cache, file, whole(state), audio::GainCurve(), request));
    }
    count_frames(state);
}

void gain(benchmark::State& state) {
    const audio::GainCurve curve = ride_curve();
    std::vector<float> samples(static_cast<std::size_t>(whole(state).frame_count), 0.5F);
    for (auto _ : state) {
        curve.apply(0, static_cast<int>(state.range(0)), 1, samples, samples);
        benchmark::DoNotOptimize(samples.data());
    }
    count_frames(state);
}

void render_with_a_ride(benchmark::State& state) {
    const auto file = speech(static_cast<int>(state.range(0)));
    const audio::GainCurve curve = ride_curve();
    audio::AudioCache cache;
    for (auto _ : state) {
        benchmark::DoNotOptimize(audio::render(cache, file, whole(state), curve, folder / "render.wav")
                                     ->file.publish(ExistingFile::replace));
    }
    count_frames(state);
}

BENCHMARK(bare_decode)->Arg(8000)->Arg(48000);
BENCHMARK(decode)->Arg(8000)->Arg(48000);
BENCHMARK(peaks)->Arg(8000)->Arg(48000);
BENCHMARK_CAPTURE(loudness, momentary_maximum, audio::LoudnessRequest::momentary_only())
    ->Arg(8000)
    ->Arg(48000);
BENCHMARK_CAPTURE(loudness, everything, audio::LoudnessRequest::everything())->Arg(8000)->Arg(48000);
BENCHMARK(gain)->Arg(8000)->Arg(48000);
BENCHMARK(render_with_a_ride)->Arg(8000)->Arg(48000);

} // namespace
} // namespace headless
