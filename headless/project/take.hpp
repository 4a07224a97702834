#pragma once
// A take: a stretch of an audio file with its own name, volume and envelopes.

#include "headless/project/envelope.hpp"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace headless::project {

class Item;

/// The file behind a take, with the format it had when it was first read. The format is zeros if the file was
/// never read, as in a project that was loaded.
struct Source {
    std::filesystem::path file;
    std::string type = "WAVE"; ///< the host's name for the kind of file
    int sample_rate = 0;       ///< frames per second
    int channels = 0;
    std::int64_t frames = 0;

    /// 0 while the sample rate is unknown.
    double length_seconds() const;

    bool operator==(const Source&) const = default;
};

/// Created and destroyed by its item; its address is its identity.
class Take {
public:
    Take(Item& item, Source source, std::string name);
    ~Take();
    Take(const Take&) = delete;
    Take& operator=(const Take&) = delete;

    Item& item() const { return item_; }

    Source source;
    std::string name;
    double volume = 1.0;               ///< linear; below 0 inverts the polarity
    double pan = 0.0;                  ///< -1 left .. 1 right
    double start_offset_seconds = 0.0; ///< where in the file the item begins
    double play_rate = 1.0;
    bool preserve_pitch = true;
    double pitch_semitones = 0.0;
    int channel_mode = 0; ///< 0 normal, 1 reversed, 2 downmix, 3 left, 4 right, ...

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
