#include "headless/workstation/sample_reader.hpp"

#include "headless/workstation/workstation.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace headless::workstation {
namespace {

/// The frames that are asked for, and where they go.
struct Request {
    std::int64_t first_frame;
    std::int64_t frame_count;
    int channels;
    std::span<double> samples;
};

// Adds a channel of a block to one of the request.
void add_channel(std::span<const float> block, std::size_t from, int width, double gain,
                 const Request& request, std::int64_t place, int to) {
    for (std::size_t in = from, out = static_cast<std::size_t>(place * request.channels + to);
         in < block.size();
         in += static_cast<std::size_t>(width), out += static_cast<std::size_t>(request.channels))
        request.samples[out] += gain * static_cast<double>(block[in]);
}

double balance(double pan, int channel) {
    if (channel > 1)
        return 1.0;
    return std::min(1.0, channel == 0 ? 1.0 - pan : 1.0 + pan);
}

} // namespace

/// A take that is heard.
struct SampleReader::Voice {
    TakeAudio audio;
    audio::GainCurve gain;
    double pan;
    std::int64_t first_frame; // on the reader's timeline

    /// @returns whether any of the frames asked for are played
    Result<bool> add_to(const Request& request) {
        const std::int64_t begin = std::max(request.first_frame, first_frame);
        const std::int64_t end =
            std::min(request.first_frame + request.frame_count, first_frame + audio.range.frame_count);
        if (begin >= end)
            return false;
        const int sample_rate = audio.sound->format().sample_rate;
        const int width = audio.sound->format().channels;
        std::int64_t frame = begin;
        std::vector<float> scaled;
        const auto add = [&](std::span<const float> block) -> Result<void> {
            scaled.resize(block.size());
            gain.apply(frame - first_frame, sample_rate, width, block, scaled);
            for (int to = 0;
                 to < (width == 1 ? std::min(2, request.channels) : std::min(width, request.channels));
                 ++to) {
                const auto from = static_cast<std::size_t>(width == 1 ? 0 : to);
                add_channel(scaled, from, width, balance(pan, to), request, frame - request.first_frame, to);
            }
            frame += static_cast<std::int64_t>(block.size()) / width;
            return {};
        };
        return audio.sound->read({audio.range.first_frame + begin - first_frame, end - begin}, add).map([] {
            return true;
        });
    }
};

SampleReader::SampleReader(Workstation& workstation, const project::Take& take)
    : workstation_(workstation), take_(&take), known_state_(state()) {}

SampleReader::SampleReader(Workstation& workstation, const project::Track& track)
    : workstation_(workstation), track_(&track), known_state_(state()) {}

SampleReader::~SampleReader() = default;

bool SampleReader::is_alive() const {
    const project::LiveObjects& live_objects = workstation_.project().live_objects();
    return take_ ? live_objects.contains(take_) : live_objects.contains(track_);
}

std::vector<const project::Take*> SampleReader::takes() const {
    if (take_)
        return {take_};
    std::vector<const project::Take*> heard;
    for (const auto& item : track_->items()) {
        if (item->mute)
            continue;
        for (const auto& take : item->takes())
            if (!take->is_empty && (item->plays_all_takes || take.get() == item->active_take()))
                heard.push_back(take.get());
    }
    return heard;
}

VoiceState SampleReader::state_of(const project::Take& take) const {
    const project::Item& item = take.item();
    VoiceState state{.source = take.source,
                     .start_offset_seconds = take.start_offset_seconds,
                     .play_rate = take.play_rate,
                     .pitch_semitones = take.pitch_semitones,
                     .preserve_pitch = take.preserve_pitch,
                     .channel_mode = take.channel_mode,
                     .loop = item.loop,
                     .length_seconds = item.length_seconds(),
                     .volume_points = {},
                     .fades = {}};
    if (take_)
        return state;
    state.position_seconds = item.position_seconds();
    state.gain = item.volume * take.volume;
    state.pan = take.pan;
    state.fades = fades_of(item);
    const project::Envelope* volume = take.envelope("Volume");
    if (volume && volume->properties.active)
        state.volume_points.assign(volume->points().begin(), volume->points().end());
    return state;
}

SampleReader::State SampleReader::state() const {
    if (!is_alive())
        return std::nullopt;
    std::vector<VoiceState> states;
    for (const project::Take* take : takes())
        states.push_back(state_of(*take));
    return states;
}

double SampleReader::start_seconds() const {
    return !take_ && is_alive() && !track_->items().empty() ? track_->items().front()->position_seconds()
                                                            : 0.0;
}

double SampleReader::end_seconds() const {
    if (!is_alive())
        return 0.0;
    if (take_)
        return take_->item().length_seconds();
    double end = 0.0;
    for (const auto& item : track_->items())
        end = std::max(end, item->end_seconds());
    return end;
}

Result<SampleReader::Voice> SampleReader::voice_of(const project::Take& take, int sample_rate) const {
    auto audio = take_ ? audio_of(workstation_.audio(), take, sample_rate)
                       : heard_audio_of(workstation_.audio(), take, sample_rate);
    return std::move(audio).map([&](TakeAudio&& opened) {
        if (take_)
            return Voice{std::move(opened), audio::GainCurve(), 0.0, 0};
        const double first = std::round(take.item().position_seconds() * sample_rate);
        if (has_bent_fade(take.item()))
            workstation_.report_once(Failure{"audio accessor: how fades are bent is not considered"});
        return Voice{std::move(opened), faded_gain_of(take), take.pan, static_cast<std::int64_t>(first)};
    });
}

// The voices are kept from one read to the next, as scripts read short stretches one after the other.
Result<void> SampleReader::open(int sample_rate) {
    State present = state();
    if (!present)
        return tl::unexpected(Failure{"the take or track of an audio accessor is gone"});
    if (sample_rate == opened_rate_ && present == opened_state_)
        return {};
    opened_state_.reset();
    voices_.clear();
    for (const project::Take* take : takes()) {
        auto voice = voice_of(*take, sample_rate);
        if (!voice)
            return tl::unexpected(voice.error());
        voices_.push_back(std::move(*voice));
    }
    opened_rate_ = sample_rate;
    opened_state_ = std::move(present);
    return {};
}

Result<bool> SampleReader::read(int sample_rate, int channels, double start_seconds,
                                std::span<double> samples) {
    constexpr double max_frames = 9e15; // every whole number up to this is exact as a double
    std::ranges::fill(samples, 0.0);
    const double first = std::round(start_seconds * sample_rate);
    if (!(std::abs(first) < max_frames))
        return tl::unexpected(Failure{"samples were asked for at an impossible time"});
    if (auto opened = open(sample_rate); !opened)
        return tl::unexpected(opened.error());
    const Request request{static_cast<std::int64_t>(first),
                          static_cast<std::int64_t>(samples.size()) / channels, channels, samples};
    bool is_played = false;
    for (Voice& voice : voices_) {
        Result<bool> added = voice.add_to(request);
        if (!added)
            return added;
        is_played = is_played || *added;
    }
    return is_played;
}

SampleReader& SampleReaders::add(std::unique_ptr<SampleReader> reader) {
    SampleReader& added = *reader;
    readers_.emplace(&added, std::move(reader));
    return added;
}

SampleReader* SampleReaders::find(AudioAccessor* handle) const {
    const auto found = readers_.find(handle);
    return found == readers_.end() ? nullptr : found->second.get();
}

} // namespace headless::workstation
