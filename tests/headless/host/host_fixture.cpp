#include "tests/headless/host/host_fixture.hpp"

#include <sndfile.h>

#include <stdexcept>
#include <unistd.h>

namespace headless {

const int wav_float = SF_FORMAT_WAV | SF_FORMAT_FLOAT;

HostTest::HostTest()
    : folder(std::filesystem::temp_directory_path() / ("felspar-host-test-" + std::to_string(getpid()))) {
    std::filesystem::create_directories(folder);
    workstation.project().record_path = folder;
}

HostTest::~HostTest() { std::filesystem::remove_all(folder); }

std::filesystem::path HostTest::write_recording(const std::string& name, const Recording& recording,
                                                int format) const {
    std::filesystem::path file = folder / name;
    SF_INFO info{};
    info.samplerate = recording.sample_rate;
    info.channels = recording.channels;
    info.format = format;
    SNDFILE* sound = sf_open(file.c_str(), SFM_WRITE, &info);
    const auto count = static_cast<sf_count_t>(recording.samples.size());
    if (!sound || sf_write_float(sound, recording.samples.data(), count) != count) {
        throw std::runtime_error("cannot write " + file.string());
    }
    sf_close(sound);
    return file;
}

Recording read_recording(const std::filesystem::path& file) {
    SF_INFO info{};
    SNDFILE* sound = sf_open(file.c_str(), SFM_READ, &info);
    if (!sound) {
        throw std::runtime_error("cannot read " + file.string());
    }
    Recording recording{info.samplerate, info.channels, {}};
    recording.samples.resize(static_cast<std::size_t>(info.frames * info.channels));
    sf_readf_float(sound, recording.samples.data(), info.frames);
    sf_close(sound);
    return recording;
}

Item& HostTest::insert_level(const std::string& name, float level, double length_seconds,
                             double position_seconds) {
    constexpr int sample_rate = 8000;
    const auto count = static_cast<std::size_t>(length_seconds * sample_rate);
    const auto file = write_recording(name, {sample_rate, 1, std::vector<float>(count, level)});
    Track& track = workstation.project().insert_track(workstation.project().tracks().size());
    const Result<Item*> item = workstation.insert_audio(track, file, position_seconds);
    if (!item) {
        throw std::runtime_error(item.error().message);
    }
    return **item;
}

} // namespace headless
