#pragma once
// An item: a time span on a track with one or more takes, of which one is heard.

#include "headless/chunk/guid.hpp"
#include "headless/chunk/lines.hpp"
#include "headless/project/take.hpp"
#include "headless/project/timeline.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace headless::project {

class Track;

/// Created and destroyed by its track; its address is its identity.
class Item {
public:
    Item(Track& track, std::uint64_t serial, double position_seconds, double length_seconds);
    ~Item();
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    /// Items lie next to each other in memory. Plug-ins walk through all items at each insertion, and each
    /// item would otherwise be a cache miss.
    static void* operator new(std::size_t bytes);
    static void operator delete(void* item);

    Track& track() const { return *track_; }

    /// Moves the item to its place among the items of another track of the project; it stays selected if it was.
    void move_to(Track& track);

    /// Unique among the project's items.
    std::uint64_t serial() const { return serial_; }

    double position_seconds() const { return position_seconds_; }

    /// Moves the item to its new place among the track's items.
    void set_position_seconds(double position_seconds);

    double length_seconds() const { return length_seconds_; }

    /// A length below 0 counts as 0.
    void set_length_seconds(double length_seconds);

    double end_seconds() const { return position_seconds_ + length_seconds_; }

    bool selected() const { return selected_; }
    void set_selected(bool selected);

    chunk::Guid id; ///< none until the item is saved or asked for it

    /// Its lines in the file, up to those of the first take; null if it was made since.
    std::unique_ptr<chunk::Block> block;

    double volume = 1.0; ///< linear, on top of the take's
    double snap_offset_seconds = 0.0;
    bool mute = false;
    bool loop = false; ///< the source repeats if the item is longer
    bool plays_all_takes = false;
    Timebase timebase = Timebase::inherited;
    int color = 0; ///< native with the flag 0x1000000, 0 for none

    const std::vector<std::unique_ptr<Take>>& takes() const { return takes_; }

    /// Null past the end.
    Take* take(std::size_t index) const { return index < takes_.size() ? takes_[index].get() : nullptr; }

    /// Null if the item has no take. May be an empty one.
    Take* active_take() const { return take(active_take_); }

    /// Does nothing if the take belongs to another item.
    void set_active_take(const Take& take);

    /// Adds a take after the others. The first take becomes active, further takes only by set_active_take.
    Take& add_take(Source source, std::string name);

    /// Destroys the take; another one becomes active. Does nothing if the take belongs to another item.
    void erase_take(const Take& take);

    /// Destroys all takes but the active one, and that one too if it is empty.
    void crop_to_active_take();

    /// Destroys all takes.
    void clear();

    /// The order of items on a track: by position, and at the same position in the order of creation.
    bool comes_before(const Item& other) const;

private:
    void move(Track& track, double position_seconds);

    Track* track_;
    std::uint64_t serial_;
    double position_seconds_;
    double length_seconds_;
    bool selected_ = false;
    std::size_t active_take_ = 0;
    std::vector<std::unique_ptr<Take>> takes_;
};

} // namespace headless::project
