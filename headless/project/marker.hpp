#pragma once
// Markers and regions of a project, and the numbers that users see.

#include "headless/chunk/guid.hpp"
#include "headless/chunk/lines.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace headless::project {

class Track;

/// A track that is rendered for a region.
struct RegionRender {
    Track* track; ///< of the same project; may be the master
    int channels; ///< 0 for the track's own

    bool operator==(const RegionRender&) const = default;
};

struct Marker {
    bool is_region = false;
    double position_seconds = 0.0;
    double end_seconds = 0.0; ///< of a region; a marker's is 0
    std::string name{};
    int number = 0;                      ///< as displayed; markers and regions are numbered separately
    int color = 0;                       ///< native with the flag 0x1000000, 0 for the default
    std::vector<RegionRender> renders{}; ///< of a region, no track twice

    std::uint64_t serial = 0; ///< unique among the list's entries, which give it
    chunk::Guid id{};         ///< none until the entry is saved or asked for it

    /// Its lines in the file: one of a marker, two of a region, which may have blocks between them. Empty if
    /// it was made since.
    chunk::Lines lines{};

    /// Compares what users see.
    bool operator==(const Marker& other) const;
};

/// In the order of positions. Entries at the same position keep the order they were added in.
class MarkerList {
public:
    const std::vector<Marker>& all() const { return markers_; }

    std::size_t region_count() const;

    /// Adds the marker under its own number. A negative number, and the number of a region that another
    /// region has, are replaced by the lowest free one from 1.
    /// @returns the number it got
    int add(Marker marker);

    /// Adds the marker under its own number, which others may have too.
    /// @returns its serial
    std::uint64_t add_as_read(Marker marker);

    /// Replaces what users see of the first entry of that kind and number.
    /// @returns false if there is none
    bool replace(Marker marker);

    /// Replaces the entry of that index. Unless `sorts`, it keeps its index until `sort`.
    /// @returns false, with nothing changed, past the end or if another region has the region's number
    bool replace(std::size_t index, Marker marker, bool sorts = true);

    /// Orders by position; entries at the same position keep their order.
    void sort();

    /// Renders a track for the first region of that number, with that many channels (0 for the track's own).
    /// Empty: no longer renders it.
    /// @returns false if there is no such region
    bool set_render(int number, Track& track, std::optional<int> channels);

    /// No region renders the track any more.
    void erase_renders(const Track& track);

    /// The first entry of that kind and number, null if there is none.
    const Marker* find(bool is_region, int number) const;

    /// @returns false past the end
    bool erase(std::size_t index);

    /// Calls edit(marker) for each entry. Positions must stay.
    template <class Edit>
    void edit(Edit edit) {
        std::ranges::for_each(markers_, edit);
    }

private:
    std::uint64_t insert(Marker marker);
    int lowest_free_number(bool is_region) const;

    std::uint64_t last_serial_ = 0;
    std::vector<Marker> markers_;
};

} // namespace headless::project
