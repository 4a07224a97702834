#include "headless/project/item.hpp"

#include "headless/project/project.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>
#include <utility>

namespace headless::project {
namespace {

/// Memory for items, next to each other, so that walking through all of them is faster. (The pools of
/// libstdc++ 12 crash if they get no memory.) For one thread at a time, as a project is. Never freed, as
/// static objects may still hold items at exit.
class ItemMemory {
public:
    void* take() {
        if (!free_)
            add_chunk();
        return std::exchange(free_, free_->next);
    }

    void give(void* place) { free_ = new (place) Place{free_}; }

private:
    struct Place {
        Place* next;
    };
    static_assert(sizeof(Item) % alignof(Item) == 0 && alignof(Item) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);

    void add_chunk() {
        constexpr std::size_t items_a_chunk = 256;
        auto* chunk = static_cast<std::byte*>(::operator new(items_a_chunk * sizeof(Item)));
        for (std::size_t i = items_a_chunk; i-- > 0;)
            give(chunk + i * sizeof(Item));
    }

    Place* free_ = nullptr;
};

ItemMemory item_memory;

} // namespace

void* Item::operator new(std::size_t) { return item_memory.take(); }

void Item::operator delete(void* item) { item_memory.give(item); }

Item::Item(Track& track, std::uint64_t serial, double position_seconds, double length_seconds)
    : track_(&track), serial_(serial), position_seconds_(position_seconds), length_seconds_(length_seconds) {
    track.project().live_objects_.add(this);
}

Item::~Item() {
    takes_.clear();
    track_->project().live_objects_.remove(this);
}

void Item::set_position_seconds(double position_seconds) {
    if (std::isfinite(position_seconds))
        move(*track_, position_seconds);
}

void Item::move_to(Track& track) { move(track, position_seconds_); }

void Item::move(Track& track, double position_seconds) {
    const bool was_selected = selected_;
    set_selected(false); // the selection is ordered by track and position
    const auto place = track_->place_of(*this);
    auto self = std::move(*place);
    track_->items_.erase(place);
    Project& project = track_->project();
    project.item_counts_are_stale_ |= track_ != &track;
    project.remove_end(end_seconds());
    track_ = &track;
    position_seconds_ = position_seconds;
    project.add_end(end_seconds());
    track.items_.insert(track.place_of(*this), std::move(self));
    set_selected(was_selected);
}

void Item::set_length_seconds(double length_seconds) {
    if (std::isfinite(length_seconds)) {
        track_->project().remove_end(end_seconds());
        length_seconds_ = std::max(length_seconds, 0.0);
        track_->project().add_end(end_seconds());
    }
}

void Item::set_selected(bool selected) {
    if (selected == selected_)
        return;
    auto& selection = track_->project().selected_items_;
    if (selected)
        selection.insert(this);
    else
        selection.erase(this);
    selected_ = selected;
}

void Item::set_active_take(const Take& wanted) {
    const auto found = std::ranges::find(takes_, &wanted, &std::unique_ptr<Take>::get);
    if (found != takes_.end())
        active_take_ = static_cast<std::size_t>(found - takes_.begin());
}

Take& Item::add_take(Source source, std::string name) {
    takes_.push_back(std::make_unique<Take>(*this, std::move(source), std::move(name)));
    return *takes_.back();
}

void Item::erase_take(const Take& unwanted) {
    const auto found = std::ranges::find(takes_, &unwanted, &std::unique_ptr<Take>::get);
    if (found == takes_.end())
        return;
    const auto index = static_cast<std::size_t>(found - takes_.begin());
    takes_.erase(found);
    if (active_take_ > index || active_take_ == takes_.size())
        active_take_ -= active_take_ > 0 ? 1 : 0;
}

void Item::crop_to_active_take() {
    if (takes_.empty())
        return;
    auto kept = std::move(takes_[active_take_]);
    clear();
    if (!kept->is_empty)
        takes_.push_back(std::move(kept));
}

void Item::clear() {
    takes_.clear();
    active_take_ = 0;
}

bool Item::comes_before(const Item& other) const {
    return std::pair(position_seconds_, serial_) < std::pair(other.position_seconds_, other.serial_);
}

} // namespace headless::project
