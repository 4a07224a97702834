#pragma once
// A take: a stretch of an audio file with its own name, volume and envelopes.

#include "headless/chunk/guid.hpp"
#include "headless/chunk/lines.hpp"
#include "headless/project/envelope.hpp"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace headless::project {

class Item;

/// A stretch of another source. What lies outside that source is silent.
struct Section {
    double start_seconds = 0.0;
    double length_seconds = 0.0;  ///< 0 or less: up to the end of that source
    bool reversed = false;        ///< plays the stretch from its end
    double overlap_seconds = 0.0; ///< crossfade between repetitions

    bool operator==(const Section&) const = default;
};

/// What a take plays: a file, or a section of another source. The format is that of the file when it was first
/// read, and zeros if it was never read, as in a project that was loaded.
struct Source {
    static constexpr const char* empty_type = "EMPTY"; ///< of takes that have nothing to play yet

    std::filesystem::path file; ///< empty for a section
    std::string type = "WAVE";  ///< the host's name for the kind of source
    int sample_rate = 0;        ///< frames per second
    int channels = 0;
    std::int64_t frames = 0;
    bool offline = false;            ///< set offline by the user: not to be read
    Section section{};               ///< for a source of type SECTION
    std::shared_ptr<Source> inner{}; ///< what a section plays; otherwise null. Copies share it

    /// The innermost source, which has the file.
    const Source& root() const;
    Source& root() { return const_cast<Source&>(std::as_const(*this).root()); }

    /// 0 while the sample rate is unknown.
    double length_seconds() const;

    /// Compares what sections play by value.
    bool operator==(const Source& other) const;
};

/// Created and destroyed by its item; its address is its identity.
class Take {
public:
    Take(Item& item, Source source, std::string name);
    ~Take();
    Take(const Take&) = delete;
    Take& operator=(const Take&) = delete;

    Item& item() const { return item_; }

    /// An empty take lane: it counts among the item's takes, but there is nothing to play.
    bool is_empty = false;

    chunk::Guid id; ///< none until the take is saved or asked for it

    /// Its lines in the item's block; empty if it was made since.
    chunk::Lines lines;

    Source source;
    std::string name;
    double volume = 1.0;               ///< linear; below 0 inverts the polarity
    double pan = 0.0;                  ///< -1 left .. 1 right
    double start_offset_seconds = 0.0; ///< where in the file the item begins
    double play_rate = 1.0;
    bool preserve_pitch = true;
    double pitch_semitones = 0.0;
    int channel_mode = 0; ///< 0 normal, 1 reversed, 2 downmix, 3 left, 4 right, 5 third channel, ...

    const std::vector<std::unique_ptr<Envelope>>& envelopes() const { return envelopes_; }

    /// Null if the take has no envelope of that name.
    Envelope* envelope(std::string_view name) const;

    /// Adds an envelope without points after the others.
    Envelope& add_envelope(std::string name);

private:
    Item& item_;
    std::vector<std::unique_ptr<Envelope>> envelopes_;
};

} // namespace headless::project
