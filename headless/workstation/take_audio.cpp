#include "headless/workstation/take_audio.hpp"

#include "headless/audio/resampler.hpp"
#include "headless/chunk/lines.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

namespace headless::workstation {
namespace {

using audio::Sound;

constexpr double max_frames = 9007199254740992.0; // 2^53: beyond it a double skips frames

// Values of the channel mode. From first_channel on, each is a channel alone.
constexpr int swapped_channels = 1;
constexpr int mix_to_mono = 2;
constexpr int first_channel = 3;
constexpr int first_pair = 67;

constexpr std::array<std::string_view, 8> types_without_audio_file{
    "MIDI", "MIDIPOOL", "VIDEO", "VIDEOEFFECT", "RPP_PROJECT", "CLICK", "LTC", "EMPTY"};

tl::unexpected<Failure> failure_of(const project::Take& take, const std::string& reason) {
    return tl::unexpected(Failure{"take '" + take.name + "': " + reason, take.source.root().file});
}

tl::unexpected<Failure> not_supported(const project::Take& take, const std::string& setting) {
    return failure_of(take, setting + " is not supported");
}

bool has_active(const project::Take& take, std::string_view envelope_name) {
    const project::Envelope* envelope = take.envelope(envelope_name);
    return envelope && envelope->properties.active && !envelope->points().empty();
}

bool is_offline(const project::Take& take) {
    const project::Source* source = &take.source;
    while (!source->offline && source->inner)
        source = source->inner.get();
    return source->offline;
}

// Each effect of the block follows a line that says whether it is bypassed.
bool has_active_effects(const project::Take& take) {
    const chunk::Block* effects = chunk::find_block(take.lines, "TAKEFX");
    return effects && std::ranges::any_of(effects->lines, [](const chunk::Node& node) {
               return node.line() && node.token() == "BYPASS" &&
                      chunk::number_at(*node.line(), 1, 0.0) == 0.0;
           });
}

bool is_playable_rate(double rate) {
    return rate >= audio::ResampledSound::smallest_step && rate <= audio::ResampledSound::largest_step;
}

// What concerns the source and the speed at which it plays.
std::vector<std::string> unplayable_settings(const project::Take& take) {
    std::vector<std::string> settings;
    const auto add_if = [&](bool is_set, std::string setting) {
        if (is_set)
            settings.push_back(std::move(setting));
    };
    const std::string& type = take.source.root().type;
    add_if(std::ranges::find(types_without_audio_file, type) != types_without_audio_file.end(),
           "a source of type " + type);
    add_if(is_offline(take), "media that is offline");
    const bool is_other_rate = take.play_rate != 1.0;
    add_if(is_other_rate && take.preserve_pitch, "a play rate other than 1 with preserved pitch");
    add_if(is_other_rate && !is_playable_rate(take.play_rate), "a play rate beyond 256 or below 1/256");
    add_if(take.pitch_semitones != 0.0, "a pitch shift");
    add_if(has_active(take, "Pitch"), "a pitch envelope");
    add_if(chunk::find_line(take.lines, "SM") != nullptr, "stretching by markers");
    add_if(take.channel_mode < 0 || take.channel_mode > first_pair,
           "channel mode " + std::to_string(take.channel_mode));
    return settings;
}

const chunk::Text* fade_line(const project::Item& item, std::string_view token) {
    return item.block ? chunk::find_line(item.block->lines, token) : nullptr;
}

// What is applied to the sound of the source.
std::vector<std::string> unplayable_processing(const project::Take& take) {
    std::vector<std::string> settings;
    if (has_active(take, "Mute"))
        settings.emplace_back("a mute envelope");
    if (has_active_effects(take))
        settings.emplace_back("processing by effects");
    return settings;
}

// The channels that the take plays; empty if the source lacks one of them or the mode does not say which.
std::vector<audio::ChannelSound::Mean> played_channels(int mode, int channels) {
    if (channels == 1 && mode <= first_channel)
        return {{0}};
    if (mode == swapped_channels || mode == mix_to_mono || mode == first_pair) {
        using Means = std::vector<audio::ChannelSound::Mean>;
        const Means means = mode == swapped_channels ? Means{{1}, {0}}
                            : mode == mix_to_mono    ? Means{{0, 1}}
                                                     : Means{{0}, {1}};
        return channels == 2 || (channels > 2 && mode == first_pair) ? means : Means{};
    }
    const int channel = mode - first_channel;
    if (channel >= channels)
        return {};
    return {{static_cast<std::size_t>(channel)}};
}

Result<std::unique_ptr<Sound>> with_channel_mode(const project::Take& take, std::unique_ptr<Sound> sound) {
    if (take.channel_mode == 0)
        return sound;
    const int channels = sound->format().channels;
    auto played = played_channels(take.channel_mode, channels);
    if (played.empty()) {
        return not_supported(take, "channel mode " + std::to_string(take.channel_mode) + " of " +
                                       std::to_string(channels) + " channels");
    }
    return std::make_unique<audio::ChannelSound>(std::move(sound), std::move(played));
}

bool is_file_as_it_is(const project::Take& take) {
    return !take.source.inner && take.play_rate == 1.0 && take.channel_mode == 0;
}

Result<std::unique_ptr<Sound>> repeated_if_needed(const project::Take& take, std::unique_ptr<Sound> sound,
                                                  double first, double end) {
    const std::int64_t frames = sound->format().frames;
    if (!take.item().loop || (first >= 0 && end <= static_cast<double>(frames)))
        return sound;
    if (frames == 0)
        return failure_of(take, "a source without length cannot repeat");
    if (take.source.section.overlap_seconds > 0.0)
        return not_supported(take, "a section that overlaps its repetition");
    return std::make_unique<audio::RepeatedSound>(std::move(sound));
}

Result<std::unique_ptr<Sound>> file_sound(audio::AudioCache& cache, const std::filesystem::path& file,
                                          Result<audio::AudioFormat> format) {
    return format.map([&](const audio::AudioFormat& found) -> std::unique_ptr<Sound> {
        return std::make_unique<audio::FileSound>(cache, file, found);
    });
}

Result<std::unique_ptr<Sound>> section_of(const project::Section& section, std::unique_ptr<Sound> inner) {
    const double sample_rate = inner->format().sample_rate;
    const double first = std::round(section.start_seconds * sample_rate);
    const double count = section.length_seconds > 0.0
                             ? std::round(section.length_seconds * sample_rate)
                             : std::max(0.0, static_cast<double>(inner->format().frames) - first);
    if (!(std::abs(first) < max_frames && count < max_frames))
        return tl::unexpected(path_failure(inner->file(), "a section of it has no usable place"));
    const audio::FrameRange stretch{static_cast<std::int64_t>(first), static_cast<std::int64_t>(count)};
    return std::make_unique<audio::SectionSound>(std::move(inner), stretch, section.reversed);
}

} // namespace

Result<audio::AudioFormat> decoded_format(audio::AudioCache& cache, const std::filesystem::path& file) {
    return cache.read(file, {0, 1}, [](std::span<const float>) { return Result<void>(); }).and_then([&] {
        return cache.format(file);
    });
}

Result<std::unique_ptr<Sound>> sound_of(audio::AudioCache& cache, const project::Source& source) {
    std::vector<const project::Source*> sections; // the outermost first
    for (const project::Source* section = &source; section->inner; section = section->inner.get())
        sections.push_back(section);
    const std::filesystem::path& file = source.root().file;
    if (file.empty())
        return tl::unexpected(Failure{"a source of type " + source.root().type + " has no audio file"});
    auto sound = file_sound(cache, file, decoded_format(cache, file));
    for (; sound && !sections.empty(); sections.pop_back())
        sound = section_of(sections.back()->section, std::move(*sound));
    return sound;
}

std::vector<std::string> unplayable(const project::Take& take) {
    std::vector<std::string> all = unplayable_settings(take);
    std::ranges::move(unplayable_processing(take), std::back_inserter(all));
    return all;
}

Result<TakeAudio> audio_of(audio::AudioCache& cache, const project::Take& take, int sample_rate) {
    const std::filesystem::path& file = take.source.root().file;
    if (const auto settings = unplayable_settings(take); !settings.empty())
        return not_supported(take, settings.front());
    if (file.empty())
        return failure_of(take, "has no audio file");
    // The header's length will do where nothing depends on the file's end.
    auto sound = is_file_as_it_is(take) && !take.item().loop ? file_sound(cache, file, cache.format(file))
                                                             : sound_of(cache, take.source);
    if (!sound)
        return tl::unexpected(sound.error());
    const Sound* const source_sound = sound->get();
    const int source_rate = (*sound)->format().sample_rate;
    const int rate = sample_rate > 0 ? sample_rate : source_rate;
    const double start_seconds = take.start_offset_seconds / take.play_rate;
    const double first = std::round(start_seconds * rate);
    const double count = std::round(take.item().length_seconds() * rate);
    const double step = take.play_rate * source_rate / rate;
    if (!(count >= 1.0 && count < max_frames && std::abs(first) < max_frames))
        return failure_of(take, "its item has no usable length");
    if (!is_playable_rate(step))
        return not_supported(take, std::to_string(rate) + " Hz");
    const audio::FrameRange range{static_cast<std::int64_t>(first), static_cast<std::int64_t>(count)};
    sound = repeated_if_needed(take, std::move(*sound), first * step, (first + count) * step)
                .and_then([&](std::unique_ptr<Sound> repeated) {
                    return with_channel_mode(take, std::move(repeated));
                });
    if (!sound)
        return tl::unexpected(sound.error());
    if (step != 1.0)
        sound = std::make_unique<audio::ResampledSound>(std::move(*sound), step, rate);
    const bool is_whole_file = sound->get() == source_sound && !take.source.inner;
    return TakeAudio{std::move(*sound), range, start_seconds, is_whole_file};
}

Result<TakeAudio> heard_audio_of(audio::AudioCache& cache, const project::Take& take, int sample_rate) {
    if (const auto processing = unplayable_processing(take); !processing.empty())
        return not_supported(take, processing.front());
    return audio_of(cache, take, sample_rate);
}

std::vector<audio::Fade> fades_of(const project::Item& item) {
    std::vector<audio::Fade> fades;
    for (const char* token : {"FADEIN", "FADEOUT"}) {
        const chunk::Text* line = fade_line(item, token);
        const double automatic = line ? chunk::number_at(*line, 3, 0.0) : 0.0; // of a crossfade; it wins
        const double length = line && automatic <= 0.0 ? chunk::number_at(*line, 2, 0.0) : automatic;
        if (length <= 0.0)
            continue;
        const bool is_fall = token == std::string_view("FADEOUT");
        const double shape = chunk::number_at(*line, 4, chunk::number_at(*line, 1, 0.0));
        fades.push_back({.start_seconds = is_fall ? item.length_seconds() - length : 0.0,
                         .length_seconds = length,
                         .shape = static_cast<audio::Fade::Shape>(std::clamp(shape, 0.0, 6.0)),
                         .is_fall = is_fall});
    }
    return fades;
}

bool has_bent_fade(const project::Item& item) {
    return std::ranges::any_of(std::array{"FADEIN", "FADEOUT"}, [&](const char* token) {
        const chunk::Text* line = fade_line(item, token);
        return line && chunk::number_at(*line, 6, 0.0) != 0.0;
    });
}

audio::GainCurve faded_gain_of(const project::Take& take) {
    audio::GainCurve gain = gain_of(take, take.item().volume);
    for (const audio::Fade& fade : fades_of(take.item()))
        gain.add(fade);
    return gain;
}

audio::GainCurve gain_of(const project::Take& take, double factor) {
    const project::Envelope* envelope = take.envelope("Volume");
    if (envelope && envelope->properties.active)
        return audio::GainCurve(*envelope, 0.0, factor * take.volume, take.play_rate);
    return audio::GainCurve(factor * take.volume);
}

} // namespace headless::workstation
