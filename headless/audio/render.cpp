#include "headless/audio/render.hpp"

#include "headless/audio/decoder.hpp"
#include "headless/audio/sound_file.hpp"

#include <cstring>
#include <limits>
#include <string_view>
#include <vector>

namespace headless {
namespace {

// By this mark in the file's information chunk its writer is known; libsndfile puts its own name behind it.
constexpr const char* own_mark = "felspar";

// Room for the chunks around the samples within the 4 GiB that a plain wav can hold.
constexpr std::int64_t most_wav_data_bytes = std::numeric_limits<std::uint32_t>::max() - 4096LL;

int container_for(const AudioFormat& format) {
    const std::int64_t most_frames =
        most_wav_data_bytes / (format.channels * static_cast<std::int64_t>(sizeof(float)));
    return format.frames > most_frames ? SF_FORMAT_RF64 : SF_FORMAT_WAV;
}

Failure write_failure(const std::filesystem::path& target, SNDFILE* handle) {
    return {target.string() + ": cannot be written (" + sf_strerror(handle) + ")"};
}

Result<SoundFileHandle> start_wav(const StagedFile& staged, const AudioFormat& format,
                                  const std::filesystem::path& target) {
    SF_INFO info{};
    info.samplerate = format.sample_rate;
    info.channels = format.channels;
    info.format = container_for(format) | SF_FORMAT_FLOAT;
    SoundFileHandle wav(sf_open_fd(staged.descriptor(), SFM_WRITE, &info, SF_FALSE));
    if (!wav) {
        return tl::unexpected(write_failure(target, nullptr));
    }
    // The peak chunk carries the time of writing: without it the same audio gives the same bytes.
    sf_command(wav.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
    sf_set_string(wav.get(), SF_STR_SOFTWARE, own_mark);
    return wav;
}

Result<void> write_frames(AudioStore& store, const std::filesystem::path& source, FrameRange range,
                          const GainCurve& gain, const AudioFormat& format, SNDFILE* wav,
                          const std::filesystem::path& target) {
    std::vector<float> heard;
    std::int64_t frame = 0;
    return store.read(source, range, [&](std::span<const float> block) -> Result<void> {
        heard.resize(block.size());
        gain.apply(frame, format.sample_rate, format.channels, block, heard);
        const auto frames = static_cast<std::int64_t>(block.size()) / format.channels;
        if (sf_writef_float(wav, heard.data(), frames) != frames) {
            return tl::unexpected(write_failure(target, wav));
        }
        frame += frames;
        return {};
    });
}

} // namespace

Result<AudioFormat> render(AudioStore& store, const std::filesystem::path& source, FrameRange range,
                           const GainCurve& gain, const std::filesystem::path& target,
                           ExistingFile existing) {
    auto format = store.format(source);
    if (!format) {
        return format;
    }
    if (range.frame_count <= 0) {
        return tl::unexpected(Failure{target.string() + ": there is nothing to render"});
    }
    format->frames = range.frame_count;
    auto staged = StagedFile::create(target);
    if (!staged) {
        return tl::unexpected(staged.error());
    }
    auto wav = start_wav(*staged, *format, target);
    if (!wav) {
        return tl::unexpected(wav.error());
    }
    return write_frames(store, source, range, gain, *format, wav->get(), target)
        .and_then([&]() -> Result<void> {
            if (const int error = sf_close(wav->release())) {
                return tl::unexpected(Failure{target.string() + ": " + sf_error_number(error)});
            }
            return staged->publish(existing);
        })
        .map([&] { return *format; });
}

bool is_own_file(const std::filesystem::path& file) {
    const auto sound = Decoder(AudioStore::default_patience).open(file);
    if (!sound) {
        return false;
    }
    const char* software = sf_get_string(sound->handle.get(), SF_STR_SOFTWARE);
    return software != nullptr && std::string_view(software).starts_with(own_mark);
}

} // namespace headless
