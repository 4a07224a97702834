// The least that any levelling import must do, by bare libsndfile and libebur128 in one process: decodes each
// file once, analyses it whole with the momentary loudness read every 10 ms, and encodes each subject line
// once as a 32-bit float wav. Usage: import_floor FOLDER BASE... -- SUBJECT...

#include <ebur128.h>
#include <sndfile.hh>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace {

struct Recording {
    int sample_rate;
    int channels;
    std::vector<float> samples;
};

struct Readings {
    double integrated_lufs = 0.0;
    double range_lu = 0.0;
    double short_term_lufs = 0.0;
    double momentary_maximum_lufs = -70.0;
};

Recording decode(const char* file) {
    SndfileHandle input(file);
    Recording recording{input.samplerate(), input.channels(), {}};
    recording.samples.resize(static_cast<std::size_t>(input.frames() * input.channels()));
    input.readf(recording.samples.data(), input.frames());
    return recording;
}

struct Closer {
    void operator()(ebur128_state* state) const { ebur128_destroy(&state); }
};

Readings analyse(const Recording& recording) {
    const auto channels = static_cast<unsigned>(recording.channels);
    const std::unique_ptr<ebur128_state, Closer> state(ebur128_init(
        channels, static_cast<unsigned long>(recording.sample_rate), EBUR128_MODE_I | EBUR128_MODE_LRA));
    const std::size_t hop_frames = static_cast<std::size_t>(recording.sample_rate) / 100;
    const std::size_t frames = recording.samples.size() / channels;
    Readings readings;
    for (std::size_t begin = 0; begin < frames; begin += hop_frames) {
        const std::size_t count = std::min(hop_frames, frames - begin);
        ebur128_add_frames_float(state.get(), &recording.samples[begin * channels], count);
        double momentary_lufs = 0.0;
        ebur128_loudness_momentary(state.get(), &momentary_lufs);
        readings.momentary_maximum_lufs = std::max(readings.momentary_maximum_lufs, momentary_lufs);
    }
    ebur128_loudness_global(state.get(), &readings.integrated_lufs);
    ebur128_loudness_range(state.get(), &readings.range_lu);
    ebur128_loudness_shortterm(state.get(), &readings.short_term_lufs);
    return readings;
}

bool encode(const Recording& recording, const std::string& file) {
    SndfileHandle output(file.c_str(), SFM_WRITE, SF_FORMAT_WAV | SF_FORMAT_FLOAT, recording.channels,
                         recording.sample_rate);
    const auto count = static_cast<sf_count_t>(recording.samples.size());
    return output.write(recording.samples.data(), count) == count;
}

} // namespace

int main(int argc, char** argv) {
    bool is_subject = false;
    for (int i = 2; i < argc; ++i) {
        if (std::strcmp(argv[i], "--") == 0) {
            is_subject = true;
            continue;
        }
        const Recording recording = decode(argv[i]);
        if (recording.samples.empty()) {
            std::fprintf(stderr, "%s: not decoded\n", argv[i]);
            return 1;
        }
        std::printf("%s %.2f LUFS\n", argv[i], analyse(recording).momentary_maximum_lufs);
        if (is_subject && !encode(recording, std::string(argv[1]) + "/" + std::to_string(i) + ".wav")) {
            std::fprintf(stderr, "%s: not encoded\n", argv[i]);
            return 1;
        }
    }
    return 0;
}
