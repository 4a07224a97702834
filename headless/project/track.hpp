#pragma once
// A track: a name, a level, a place in the folder tree, and the items on it in the order of their positions.

#include "headless/chunk/guid.hpp"
#include "headless/chunk/lines.hpp"
#include "headless/project/item.hpp"
#include "headless/project/timeline.hpp"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace headless::project {

class Project;

/// Created and destroyed by its project; its address is its identity.
class Track {
public:
    explicit Track(Project& project);
    ~Track();
    Track(const Track&) = delete;
    Track& operator=(const Track&) = delete;

    Project& project() const { return project_; }

    /// Index among the project's tracks, from 0; has no meaning for the master.
    std::size_t index() const { return index_; }

    /// Unique among the project's tracks.
    std::uint64_t serial() const { return serial_; }

    chunk::Guid id; ///< none until the track is saved or asked for it

    /// Its lines in the file; null if it was made since, and for the master, whose lines are the project's.
    std::unique_ptr<chunk::Block> block;

    std::string name;
    int color = 0;       ///< native with the flag 0x1000000, 0 for none
    double volume = 1.0; ///< linear
    double pan = 0.0;    ///< -1 left .. 1 right
    bool mute = false;
    Timebase timebase = Timebase::inherited;
    int solo = 0; ///< 0 off, 1 solo, 2 in place, 5 safe solo, 6 safe solo in place

    bool selected() const { return selected_; }
    void set_selected(bool selected);

    /// 1 opens a folder, -n closes the n innermost folders after this track.
    int folder_depth_change() const { return folder_depth_change_; }

    /// More than 1 counts as 1: a track opens one folder at most.
    void set_folder_depth_change(int change);

    /// Number of folders around the track, 0 at top level and for the master.
    int depth() const;

    /// The folder around the track, null at top level and for the master.
    Track* parent() const;

    /// Those of the track itself, of its effects and of the sends to it.
    const std::vector<std::unique_ptr<Envelope>>& envelopes() const { return envelopes_; }

    /// Adds an envelope without points after the others.
    Envelope& add_envelope(std::string name);

    /// Destroys the envelope of that serial.
    void erase_envelope(std::uint64_t serial);

    const std::vector<std::unique_ptr<Item>>& items() const { return items_; }

    /// Adds an item without takes at its place in the order of positions.
    Item& add_item(double position_seconds, double length_seconds);

    /// Destroys all items and envelopes.
    void clear();

    /// Destroys the item. An item of another track is left alone.
    void erase_item(const Item& item);

private:
    friend class Item;    // moves itself when its position changes
    friend class Project; // renumbers the tracks and updates the tree

    std::vector<std::unique_ptr<Item>>::iterator place_of(const Item& item);

    Project& project_;
    std::uint64_t serial_;
    std::size_t index_ = 0;
    bool selected_ = false;
    int folder_depth_change_ = 0;
    int depth_ = 0;
    Track* parent_ = nullptr;
    std::vector<std::unique_ptr<Envelope>> envelopes_;
    std::vector<std::unique_ptr<Item>> items_;
};

} // namespace headless::project
