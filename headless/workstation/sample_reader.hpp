#pragma once
// Reads samples of a take, or of all that a track's items play, at any sample rate.
//
// A take is read as its source is played: offset, sections, repetition, play rate and channel mode count;
// volumes, envelopes and pan do not. A track is read as the sum of its items that are not muted: item volume,
// take volume, volume envelope, fades and pan (as balance) count; what the track itself does to it does not. One
// channel is heard in the first two.

#include "common/plugin_abi.hpp"
#include "headless/audio/gain_curve.hpp"
#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"
#include "headless/workstation/take_audio.hpp"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace headless::workstation {

class Workstation;

/// What decides the samples of a take.
struct VoiceState {
    project::Source source;
    double start_offset_seconds = 0.0;
    double play_rate = 1.0;
    double pitch_semitones = 0.0;
    bool preserve_pitch = true;
    int channel_mode = 0;
    bool loop = false;
    double position_seconds = 0.0; ///< on the reader's timeline
    double length_seconds = 0.0;
    double gain = 1.0;
    double pan = 0.0;
    std::vector<project::EnvelopePoint> volume_points;
    std::vector<audio::Fade> fades;

    bool operator==(const VoiceState&) const = default;
};

/// Whatever the take or track is at the time is read.
class SampleReader {
public:
    SampleReader(Workstation& workstation, const project::Take& take);
    SampleReader(Workstation& workstation, const project::Track& track);
    ~SampleReader();

    /// A take begins at 0. A track begins with its first item, in seconds of the project.
    double start_seconds() const;
    double end_seconds() const;

    /// Fills `samples` with frames of `channels` interleaved samples; silence where nothing is played.
    /// @returns whether an item lies there; fails if a take cannot be read, or is gone
    Result<bool> read(int sample_rate, int channels, double start_seconds, std::span<double> samples);

    /// Whether it would be read otherwise than when it was opened or last updated.
    bool has_changed() const { return state() != known_state_; }
    void update() { known_state_ = state(); }

private:
    struct Voice;
    using State = std::optional<std::vector<VoiceState>>;

    bool is_alive() const;
    State state() const; // empty: take or track are gone
    std::vector<const project::Take*> takes() const;
    VoiceState state_of(const project::Take& take) const;
    Result<void> open(int sample_rate);
    Result<Voice> voice_of(const project::Take& take, int sample_rate) const;

    Workstation& workstation_;
    const project::Take* take_ = nullptr;   // null: a track is read
    const project::Track* track_ = nullptr; // null: a take is read
    State known_state_;
    State opened_state_; // of the voices
    int opened_rate_ = 0;
    std::vector<Voice> voices_;
};

/// The readers that scripts have not destroyed.
class SampleReaders {
public:
    SampleReader& add(std::unique_ptr<SampleReader> reader);

    /// Null for a null, destroyed or foreign handle.
    SampleReader* find(AudioAccessor* handle) const;

    void destroy(const SampleReader& reader) { readers_.erase(&reader); }

private:
    std::unordered_map<const void*, std::unique_ptr<SampleReader>> readers_; // by address
};

} // namespace headless::workstation
