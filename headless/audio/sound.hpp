#pragma once
// What can be played, measured and rendered: audio that is read by ranges of frames. A file is one; the
// others play parts of another sound, repeat it, choose among its channels or change its speed.

#include "headless/audio/audio_cache.hpp"
#include "headless/audio/frames.hpp"
#include "headless/base/failure.hpp"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

namespace headless::audio {

/// The number of frames of a sound that never ends. Any range that ends before it can be read.
inline constexpr std::int64_t endless_frames = std::int64_t{1} << 53;

class Sound {
public:
    virtual ~Sound() = default;
    Sound(const Sound&) = delete;
    Sound& operator=(const Sound&) = delete;
    Sound& operator=(Sound&&) = delete;

    const AudioFormat& format() const { return format_; }

    /// The file that is heard, for messages.
    const std::filesystem::path& file() const { return file_; }

    /// As AudioCache::read: passes exactly `range.frame_count` frames to `visit`, in order, silence for
    /// those outside the sound. A range gives the same samples however it is split.
    virtual Result<void> read(FrameRange range, const FrameVisitor& visit) = 0;

protected:
    Sound(Sound&&) = default;
    Sound(std::filesystem::path file, const AudioFormat& format) : file_(std::move(file)), format_(format) {}

private:
    std::filesystem::path file_;
    AudioFormat format_;
};

/// A file as it is.
class FileSound final : public Sound {
public:
    /// @param cache   must outlive this object
    /// @param format  of the file, as the cache gives it
    FileSound(AudioCache& cache, std::filesystem::path file, const AudioFormat& format)
        : Sound(std::move(file), format), cache_(cache) {}

    /// Fails as AudioCache::format does.
    static Result<FileSound> open(AudioCache& cache, const std::filesystem::path& file) {
        return cache.format(file).map(
            [&](const AudioFormat& format) { return FileSound(cache, file, format); });
    }

    /// Fails as AudioCache::read does, and if the file has got another format meanwhile.
    Result<void> read(FrameRange range, const FrameVisitor& visit) override;

private:
    AudioCache& cache_;
};

/// A stretch of a sound, from its start or from its end. What the stretch has outside the sound is silent.
class SectionSound final : public Sound {
public:
    SectionSound(std::unique_ptr<Sound> inner, FrameRange stretch, bool reversed);
    Result<void> read(FrameRange range, const FrameVisitor& visit) override;

private:
    Result<void> read_reversed(std::int64_t first, std::int64_t end, const FrameVisitor& visit);

    std::unique_ptr<Sound> inner_;
    std::int64_t first_frame_;
    bool reversed_;
};

/// A sound over and over, in both directions of time. Its length must not be 0.
class RepeatedSound final : public Sound {
public:
    explicit RepeatedSound(std::unique_ptr<Sound> inner);
    Result<void> read(FrameRange range, const FrameVisitor& visit) override;

private:
    Result<void> read_once(FrameRange range, const FrameVisitor& visit);

    std::unique_ptr<Sound> inner_;
    std::int64_t period_frames_;
    std::vector<float> samples_; // of a short sound, once it was read
};

/// Each channel is the mean of some channels of another sound.
class ChannelSound final : public Sound {
public:
    /// Channels of the inner sound, counted from 0; at least one.
    using Mean = std::vector<std::size_t>;

    ChannelSound(std::unique_ptr<Sound> inner, std::vector<Mean> channels);
    Result<void> read(FrameRange range, const FrameVisitor& visit) override;

private:
    std::unique_ptr<Sound> inner_;
    std::vector<Mean> channels_;
};

} // namespace headless::audio
