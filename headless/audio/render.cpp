#include "headless/audio/render.hpp"

#include "headless/audio/sound_file.hpp"
#include "headless/base/file_reading.hpp"

#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace headless::audio {
namespace {

// The mark in the information chunk by which our own files are recognised. libsndfile appends its own name
// and writes the chunk before the samples.
constexpr const char* own_mark = "felspar";
constexpr std::size_t max_header_bytes = 1024;
constexpr std::size_t chunk_heading_bytes = 8;

// Room for the chunks around the samples within the 4 GiB that a plain wav can hold.
constexpr std::int64_t max_wav_data_bytes = std::numeric_limits<std::uint32_t>::max() - 4096LL;

int container_for(const AudioFormat& format) {
    const std::int64_t max_frames =
        max_wav_data_bytes / (format.channels * static_cast<std::int64_t>(sizeof(float)));
    return format.frames > max_frames ? SF_FORMAT_RF64 : SF_FORMAT_WAV;
}

/// Writes one wav file.
class WavWriter {
public:
    /// @param descriptor  of an empty file; must outlive this object
    WavWriter(int descriptor, const AudioFormat& format) : io_(descriptor) {
        SF_INFO info{};
        info.samplerate = format.sample_rate;
        info.channels = format.channels;
        info.format = container_for(format) | SF_FORMAT_FLOAT;
        wav_.reset(io_.open(SFM_WRITE, info));
        if (!wav_)
            return;
        // The peak chunk contains the time of writing: without it the same audio gives the same bytes.
        sf_command(wav_.get(), SFC_SET_ADD_PEAK_CHUNK, nullptr, SF_FALSE);
        library_error_ = sf_set_string(wav_.get(), SF_STR_SOFTWARE, own_mark);
    }

    /// @returns whether nothing has failed
    bool write(std::span<const float> samples) {
        const auto count = static_cast<sf_count_t>(samples.size());
        return wav_ && library_error_ == 0 && sf_write_float(wav_.get(), samples.data(), count) == count &&
               io_.error_number() == 0;
    }

    /// Writes what is left, including the lengths in the header. @returns whether nothing has failed
    bool close() {
        const int error = wav_ ? sf_close(wav_.release()) : sf_error(nullptr);
        if (error != 0)
            library_error_ = error;
        return library_error_ == 0 && io_.error_number() == 0;
    }

    Failure failure(const std::filesystem::path& target) const {
        if (io_.error_number() != 0)
            return system_failure(target, io_.error_number());
        const char* reason = library_error_ ? sf_error_number(library_error_) : sf_strerror(wav_.get());
        return {target.string() + ": cannot be written (" + reason + ")"};
    }

private:
    SoundIo io_;
    SoundFileHandle wav_;
    int library_error_ = 0;
};

Result<void> write_wav(Sound& source, FrameRange range, const GainCurve& gain, const AudioFormat& format,
                       int descriptor, const std::filesystem::path& target) {
    WavWriter wav(descriptor, format);
    std::vector<float> scaled;
    std::int64_t frame = 0;
    const auto write_block = [&](std::span<const float> block) -> Result<void> {
        scaled.resize(block.size());
        gain.apply(frame, format.sample_rate, format.channels, block, scaled);
        frame += static_cast<std::int64_t>(block.size()) / format.channels;
        return wav.write(scaled) ? Result<void>() : tl::unexpected(wav.failure(target));
    };
    return source.read(range, write_block).and_then([&] {
        return wav.close() ? Result<void>() : tl::unexpected(wav.failure(target));
    });
}

} // namespace

Result<RenderedFile> render(Sound& source, FrameRange range, const GainCurve& gain,
                            const std::filesystem::path& target) {
    if (range.frame_count <= 0)
        return tl::unexpected(path_failure(target, "there is nothing to render"));
    AudioFormat format = source.format();
    format.frames = range.frame_count;
    auto file = AtomicFile::create(target);
    if (!file)
        return tl::unexpected(file.error());
    return write_wav(source, range, gain, format, file->descriptor(), target).map([&] {
        return RenderedFile{std::move(*file), format};
    });
}

Result<RenderedFile> render(AudioCache& cache, const std::filesystem::path& source, FrameRange range,
                            const GainCurve& gain, const std::filesystem::path& target) {
    return FileSound::open(cache, source).and_then([&](FileSound&& sound) {
        return render(sound, range, gain, target);
    });
}

Result<bool> is_own_file(const std::filesystem::path& file) {
    return beginning_of(file, max_header_bytes).map([](const std::optional<std::string>& header) {
        const std::size_t tag = header ? header->find("ISFT") : std::string::npos;
        return tag != std::string::npos && header->find(own_mark, tag) == tag + chunk_heading_bytes;
    });
}

} // namespace headless::audio
