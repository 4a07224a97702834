#pragma once
// The project: tracks in order, with their items, markers, the cursor, and the settings that its file holds.
// It does not access files or audio.

#include "headless/chunk/guid.hpp"
#include "headless/chunk/parse.hpp"
#include "headless/project/extension_data.hpp"
#include "headless/project/live_objects.hpp"
#include "headless/project/marker.hpp"
#include "headless/project/selection.hpp"
#include "headless/project/tempo_map.hpp"
#include "headless/project/timeline.hpp"
#include "headless/project/track.hpp"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace headless::project {

/// Track order, then the order on the track.
struct ComesBefore {
    bool operator()(const Item* left, const Item* right) const;
    bool operator()(const Track* left, const Track* right) const { return left->index() < right->index(); }
};

/// The project file as it was read. Its lines refer to its text.
struct ProjectSource {
    std::filesystem::path folder; ///< of the file; its paths are relative to it
    std::shared_ptr<const std::string> text;
    chunk::Document document;
};

class Project {
public:
    Project();
    ~Project();
    Project(const Project&) = delete;
    Project& operator=(const Project&) = delete;

    /// Null for a new project.
    std::unique_ptr<ProjectSource> source;

    /// Identifiers for new objects.
    chunk::GuidSource guids;

    /// A number that no other object of the project has.
    std::uint64_t next_serial() { return next_serial_++; }

    /// Whether folders have changed since the file was read: tracks came, went, moved or got another depth.
    bool has_new_tree() const { return has_new_tree_; }
    void set_tree_as_read() { has_new_tree_ = false; }

    std::filesystem::path file;        ///< empty until the project is saved
    std::filesystem::path record_path; ///< where renders go; may be relative to the file's folder
    double cursor_seconds = 0.0;
    int play_state = 0; ///< 1 playing + 2 paused + 4 recording, 0 stopped
    double play_position_seconds = 0.0;
    double frame_rate = 24.0; ///< frames per second
    bool drop_frame = false;
    int sample_rate = 48000;
    double tempo_bpm =
        120.0; ///< quarter notes a minute; this and the signature hold where `tempo_map` has none
    int meter_numerator = 4;
    int meter_denominator = 4;
    TempoMap tempo_map{*this};
    Timebase timebase = Timebase::beats;       ///< of items, markers and regions
    Timebase tempo_timebase = Timebase::beats; ///< of the tempo map's points
    double start_seconds = 0.0;                ///< what rulers and texts show at position 0
    int start_measure = 0;                     ///< added to measure numbers that are shown
    RulerMode ruler_mode = RulerMode::beats_and_time;
    Grid grid;
    ArrangeView view;
    bool repeats = false;   ///< playback of the loop
    double play_rate = 1.0; ///< of the transport
    MarkerList markers;
    ExtensionData extension_data;

    const std::vector<std::unique_ptr<Track>>& tracks() const { return tracks_; }

    /// Null past the end.
    Track* track(std::size_t index) const { return index < tracks_.size() ? tracks_[index].get() : nullptr; }

    Track& master() const { return *master_; }

    /// Inserts a track at that index, or at the end if the index is past it. It opens and closes no folder,
    /// so every other track keeps its depth.
    Track& insert_track(std::size_t index);

    /// Destroys the track and its items. If the track opened a folder, the folder's contents move up one
    /// level; all other tracks keep their depths. The master and tracks of other projects are left alone.
    void erase_track(const Track& track);

    std::size_t item_count() const;

    /// In track order, then by position; null past the end.
    Item* item(std::size_t index) const;

    void select_all_items(bool selected);
    const Selection<Item, ComesBefore>& selected_items() const { return selected_items_; }

    /// Without the master.
    const Selection<Track, ComesBefore>& selected_tracks() const { return selected_tracks_; }

    /// Empty ranges if nothing is selected.
    TimeRange time_selection() const { return time_selection_; }
    TimeRange loop_range() const { return loop_range_; }

    /// Both put the ends in order. The two ranges move together while they are equal, as the workstation links
    /// them unless told otherwise. A range with an end that is not finite changes nothing.
    void set_time_selection(TimeRange range);
    void set_loop_range(TimeRange range);

    /// For a project file, which holds the two one after the other: neither moves the other.
    void load_ranges(TimeRange time_selection, TimeRange loop_range);

    /// Where the last item, marker or region ends; 0 for an empty project.
    double end_seconds() const;

    const LiveObjects& live_objects() const { return live_objects_; }

private:
    friend class Track;
    friend class Item;
    friend class Take;

    void renumber_tracks();
    void remove_from_region_renders(const chunk::Guid& track);
    void count_items() const;
    void add_end(double end_seconds);
    void remove_end(double end_seconds);
    void pass_on_depth_change(std::size_t index);
    void update_tree() const;
    std::optional<std::size_t> last_in_folder(std::size_t index) const;

    LiveObjects live_objects_; // first: objects unregister in their destructors
    Selection<Item, ComesBefore> selected_items_;
    Selection<Track, ComesBefore> selected_tracks_;
    std::uint64_t next_serial_ = 1;
    bool has_new_tree_ = false;
    mutable bool tree_is_stale_ = false;
    mutable bool item_counts_are_stale_ = false;
    mutable std::vector<std::size_t> items_up_to_;          ///< item counts, each track included
    mutable std::optional<double> items_end_seconds_ = 0.0; ///< empty if it has to be searched for
    TimeRange time_selection_;
    TimeRange loop_range_;
    std::unique_ptr<Track> master_;
    std::vector<std::unique_ptr<Track>> tracks_;
};

} // namespace headless::project
