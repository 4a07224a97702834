#include "headless/project/project.hpp"

#include "headless/project/receives.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

namespace headless::project {
namespace {

// Empty if an end is not finite.
std::optional<TimeRange> in_order(TimeRange range) {
    if (!std::isfinite(range.start_seconds) || !std::isfinite(range.end_seconds))
        return std::nullopt;
    if (range.end_seconds < range.start_seconds)
        std::swap(range.start_seconds, range.end_seconds);
    return range;
}

void set_range(TimeRange& target, TimeRange& linked, TimeRange range) {
    const auto ordered = in_order(range);
    if (!ordered)
        return;
    if (linked == target)
        linked = *ordered;
    target = *ordered;
}

} // namespace

bool ComesBefore::operator()(const Item* left, const Item* right) const {
    if (&left->track() != &right->track())
        return left->track().index() < right->track().index();
    return left->comes_before(*right);
}

Project::Project() : master_(std::make_unique<Track>(*this)) {}

Project::~Project() = default;

Track& Project::insert_track(std::size_t index) {
    const std::size_t place = std::min(index, tracks_.size());
    tracks_.insert(tracks_.begin() + static_cast<std::ptrdiff_t>(place), std::make_unique<Track>(*this));
    renumber_tracks();
    has_new_tree_ = true;
    if (place + 1 < tracks_.size()) {
        NewIndices new_indices;
        for (std::size_t old = 0; old + 1 < tracks_.size(); ++old)
            new_indices.emplace_back(old < place ? old : old + 1);
        renumber_receives(*this, new_indices);
    }
    return *tracks_[place];
}

void Project::erase_track(const Track& track) {
    const std::size_t index = track.index();
    if (this->track(index) != &track)
        return;
    pass_on_depth_change(index);
    Track& going = *tracks_[index];
    for (const auto& item : going.items()) {
        item->set_selected(false);
        remove_end(item->end_seconds());
    }
    going.set_selected(false);
    markers.erase_renders(going);
    remove_from_region_renders(going.id);
    tracks_.erase(tracks_.begin() + static_cast<std::ptrdiff_t>(index));
    renumber_tracks();
    has_new_tree_ = true;
    NewIndices new_indices;
    for (std::size_t old = 0; old <= tracks_.size(); ++old)
        new_indices.push_back(old == index ? std::nullopt : std::optional(old < index ? old : old - 1));
    renumber_receives(*this, new_indices);
}

// The lines of the regions that name the track as one to be rendered.
void Project::remove_from_region_renders(const chunk::Guid& track) {
    if (!track)
        return;
    markers.edit([&](Marker& marker) {
        for (chunk::Node& node : marker.lines)
            if (chunk::Block* renders = node.block(); renders && node.token() == "REGIONRENDER")
                std::erase_if(renders->lines, [&](const chunk::Node& line) {
                    return line.line() && chunk::guid_of(chunk::text_at(*line.line(), 1)) == track;
                });
    });
}

void Project::renumber_tracks() {
    for (std::size_t index = 0; index < tracks_.size(); ++index)
        tracks_[index]->index_ = index;
    tree_is_stale_ = true;
    item_counts_are_stale_ = true;
}

// Passes the depth change of a track that will be erased to the neighbour that keeps the depths of the
// others.
void Project::pass_on_depth_change(std::size_t index) {
    const int change = tracks_[index]->folder_depth_change();
    if (change > 0) {
        if (const auto last = last_in_folder(index))
            tracks_[*last]->folder_depth_change_ += change;
    } else if (index > 0) {
        tracks_[index - 1]->folder_depth_change_ += change;
    }
}

// The track that closes the folder that the track at that index opens; empty if it stays open to the end.
std::optional<std::size_t> Project::last_in_folder(std::size_t index) const {
    int open_folders = 0;
    for (std::size_t place = index; place < tracks_.size(); ++place) {
        open_folders += tracks_[place]->folder_depth_change();
        if (open_folders <= 0)
            return place;
    }
    return std::nullopt;
}

void Project::update_tree() const {
    if (!tree_is_stale_)
        return;
    std::vector<Track*> open_folders;
    for (const auto& track : tracks_) {
        track->depth_ = static_cast<int>(open_folders.size());
        track->parent_ = open_folders.empty() ? nullptr : open_folders.back();
        if (track->folder_depth_change() > 0)
            open_folders.push_back(track.get());
        for (int closed = track->folder_depth_change(); closed < 0 && !open_folders.empty(); ++closed)
            open_folders.pop_back();
    }
    tree_is_stale_ = false;
}

void Project::count_items() const {
    if (!item_counts_are_stale_)
        return;
    items_up_to_.clear();
    std::size_t count = 0;
    for (const auto& track : tracks_)
        items_up_to_.push_back(count += track->items().size());
    item_counts_are_stale_ = false;
}

std::size_t Project::item_count() const {
    count_items();
    return items_up_to_.empty() ? 0 : items_up_to_.back();
}

Item* Project::item(std::size_t index) const {
    if (index >= item_count())
        return nullptr;
    const auto place = std::ranges::upper_bound(items_up_to_, index);
    const auto& items = tracks_[static_cast<std::size_t>(place - items_up_to_.begin())]->items();
    return items[items.size() - (*place - index)].get();
}

void Project::select_all_items(bool selected) {
    if (!selected) {
        while (selected_items_.size() > 0)
            selected_items_.at(selected_items_.size() - 1)->set_selected(false);
        return;
    }
    for (const auto& track : tracks_)
        for (const auto& item : track->items())
            item->set_selected(true);
}

void Project::set_time_selection(TimeRange range) { set_range(time_selection_, loop_range_, range); }

void Project::set_loop_range(TimeRange range) { set_range(loop_range_, time_selection_, range); }

void Project::load_ranges(TimeRange time_selection, TimeRange loop_range) {
    time_selection_ = in_order(time_selection).value_or(TimeRange());
    loop_range_ = in_order(loop_range).value_or(TimeRange());
}

// Records that an item now ends here.
void Project::add_end(double end_seconds) {
    if (items_end_seconds_)
        items_end_seconds_ = std::max(*items_end_seconds_, end_seconds);
}

// Records that an item no longer ends here.
void Project::remove_end(double end_seconds) {
    if (end_seconds >= items_end_seconds_)
        items_end_seconds_.reset();
}

double Project::end_seconds() const {
    if (!items_end_seconds_) {
        items_end_seconds_ = 0.0;
        for (const auto& track : tracks_)
            for (const auto& item : track->items())
                items_end_seconds_ = std::max(*items_end_seconds_, item->end_seconds());
    }
    double end = *items_end_seconds_;
    for (const Marker& marker : markers.all())
        end = std::max({end, marker.position_seconds, marker.end_seconds});
    return end;
}

} // namespace headless::project
