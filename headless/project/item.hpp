#pragma once
// An item: a span of a track's time with one or more takes, of which one is heard.

#include "headless/project/take.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace headless {

class Track;

/// Lives on a track, which makes and destroys it; its address is its identity.
class Item {
public:
    Item(Track& track, std::uint64_t serial, double position_seconds, double length_seconds);
    ~Item();
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    /// Items lie side by side in memory: going through all of them, as plug-ins do at each insertion, would
    /// else wait for memory at each.
    static void* operator new(std::size_t bytes);
    static void operator delete(void* item, std::size_t bytes);

    Track& track() const { return track_; }

    double position_seconds() const { return position_seconds_; }

    /// Moves the item to its new place among the track's items.
    void set_position_seconds(double position_seconds);

    double length_seconds() const { return length_seconds_; }

    /// Below 0 counts as 0.
    void set_length_seconds(double length_seconds);

    double end_seconds() const { return position_seconds_ + length_seconds_; }

    bool selected() const { return selected_; }
    void set_selected(bool selected);

    double volume = 1.0; ///< linear, on top of the take's
    double snap_offset_seconds = 0.0;
    bool mute = false;
    bool loop = false; ///< the source repeats when the item is longer
    bool plays_all_takes = false;
    int color = 0; ///< native with the flag 0x1000000, 0 for none

    const std::vector<std::unique_ptr<Take>>& takes() const { return takes_; }

    /// Null past the end.
    Take* take(std::size_t index) const { return index < takes_.size() ? takes_[index].get() : nullptr; }

    /// Null while the item has no take.
    Take* active_take() const { return take(active_take_); }

    /// Does nothing with a take of another item.
    void set_active_take(const Take& take);

    /// Behind the others; the first take is active, further ones only when set so.
    Take& add_take(Source source, std::string name);

    /// Destroys all takes but the active one.
    void crop_to_active_take();

    /// The order of items on a track: by position, and at one position in the order they were made.
    bool stands_before(const Item& other) const;

private:
    Track& track_;
    std::uint64_t serial_;
    double position_seconds_;
    double length_seconds_;
    bool selected_ = false;
    std::size_t active_take_ = 0;
    std::vector<std::unique_ptr<Take>> takes_;
};

} // namespace headless
