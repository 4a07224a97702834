#pragma once
// One audio file and, once loaded, its decoded audio. For use inside this folder.

#include "headless/audio/decoder.hpp"
#include "headless/audio/frames.hpp"
#include "headless/audio/sound_file.hpp"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>

namespace headless {

class DecodedFile {
public:
    /// Reads the header; counts the frames by decoding when the header claims more than the file can hold.
    /// @param stamp the file's present one
    /// @param decoder outlives this
    static Result<DecodedFile> open(const std::filesystem::path& file, const FileStamp& stamp,
                                    Decoder& decoder);

    const std::filesystem::path& path() const { return path_; }
    const FileStamp& stamp() const { return stamp_; }
    const AudioFormat& format() const { return format_; }

    /// What the decoded audio takes in memory; the largest number there is when the header claims more.
    std::size_t bytes() const;

    bool is_resident() const { return samples_ != nullptr; }

    /// Decodes the file into memory. The format's frame count is that of the decoded audio from then on.
    Result<void> load();
    void unload() { samples_.reset(); }

    /// Gives up the open file that `open` leaves for a `load` soon after.
    void close() { opened_.reset(); }

    /// As AudioStore::read, from memory when loaded, else from disk.
    Result<void> read(FrameRange range, const FrameVisitor& visit) const;

private:
    DecodedFile(std::filesystem::path path, const FileStamp& stamp, const AudioFormat& format,
                Decoder& decoder)
        : path_(std::move(path)), stamp_(stamp), format_(format), decoder_(&decoder) {}

    Result<SoundFile> reopen() const;
    Result<void> count_frames(const SoundFile& sound);
    Result<void> read_audio(std::int64_t first, std::int64_t end, const FrameVisitor& visit) const;
    Result<void> stream_audio(std::int64_t first, std::int64_t end, const FrameVisitor& visit) const;

    std::filesystem::path path_;
    FileStamp stamp_;
    AudioFormat format_;
    Decoder* decoder_;
    std::optional<SoundFile> opened_; // at its start
    std::shared_ptr<float[]> samples_;
};

} // namespace headless
