#pragma once
// One audio file and, once loaded, its decoded audio. For use inside this folder.

#include "headless/audio/decoder.hpp"
#include "headless/audio/frames.hpp"
#include "headless/audio/sound_file.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <limits>
#include <memory>
#include <optional>

namespace headless::audio {

class DecodedFile {
public:
    /// Reads the header. Counts the frames by decoding if the header claims more than the file can hold.
    /// @param stamp the file's present stamp
    /// @param decoder must outlive this object
    static Result<DecodedFile> open(const std::filesystem::path& file, const FileStamp& stamp,
                                    Decoder& decoder);

    const std::filesystem::path& path() const { return path_; }
    const FileStamp& stamp() const { return stamp_; }
    const AudioFormat& format() const { return format_; }

    /// The claimed and actual frame counts if the file is shorter than its header claims, as far as it has
    /// been decoded.
    std::optional<Truncation> truncation() const {
        const std::int64_t decoded = std::min(format_.frames, decodable_frames_);
        return decoded < claimed_frames_ ? std::optional(Truncation{decoded, claimed_frames_}) : std::nullopt;
    }

    /// Size of the decoded audio in memory; the largest possible value if the header claims more than that.
    std::size_t bytes() const;

    bool is_resident() const { return samples_ != nullptr; }

    /// Decodes the file into memory. From then on the format's frame count is that of the decoded audio.
    Result<void> load();
    void unload() { samples_.reset(); }

    /// Closes the file that `open` leaves open for a `load` soon after.
    void close() { opened_.reset(); }

    /// As AudioCache::read. Reads from memory if loaded, otherwise from disk.
    Result<void> read(FrameRange range, const FrameVisitor& visit);

private:
    DecodedFile(const SoundFile& sound, const FileStamp& stamp, Decoder& decoder)
        : path_(sound.path),
          stamp_(stamp), format_{sound.info.samplerate, sound.info.channels, sound.info.frames},
          claimed_frames_(sound.claimed_frames), decoder_(&decoder) {}

    Result<SoundFile> reopen() const;
    Result<void> count_frames(const SoundFile& sound);
    Result<void> read_audio(std::int64_t first, std::int64_t end, const FrameVisitor& visit);
    Result<void> stream_audio(std::int64_t first, std::int64_t end, const FrameVisitor& visit);

    std::filesystem::path path_;
    FileStamp stamp_;
    AudioFormat format_;
    std::int64_t claimed_frames_;
    std::int64_t decodable_frames_ = std::numeric_limits<std::int64_t>::max(); // until a read reaches the end
    Decoder* decoder_;
    std::optional<SoundFile> opened_; // at its start
    std::shared_ptr<float[]> samples_;
};

} // namespace headless::audio
