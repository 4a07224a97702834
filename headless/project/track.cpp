#include "headless/project/track.hpp"

#include "headless/project/project.hpp"

#include <algorithm>
#include <cmath>

namespace headless::project {

Track::Track(Project& project) : project_(project), serial_(project.next_serial()) {
    project.live_objects_.add(this);
}

Track::~Track() {
    items_.clear();
    for (const auto& envelope : envelopes_)
        project_.live_objects_.remove(envelope.get());
    project_.live_objects_.remove(this);
}

void Track::set_selected(bool selected) {
    if (selected == selected_)
        return;
    selected_ = selected;
    if (this == &project_.master())
        return;
    if (selected)
        project_.selected_tracks_.insert(this);
    else
        project_.selected_tracks_.erase(this);
}

void Track::set_folder_depth_change(int change) {
    if (folder_depth_change_ == std::min(change, 1))
        return;
    folder_depth_change_ = std::min(change, 1);
    project_.tree_is_stale_ = true;
    project_.has_new_tree_ = true;
}

int Track::depth() const {
    project_.update_tree();
    return depth_;
}

Track* Track::parent() const {
    project_.update_tree();
    return parent_;
}

Envelope& Track::add_envelope(std::string envelope_name) {
    envelopes_.push_back(std::make_unique<Envelope>(std::move(envelope_name), project_.next_serial()));
    project_.live_objects_.add(envelopes_.back().get());
    envelopes_.back()->track = this;
    return *envelopes_.back();
}

void Track::erase_envelope(std::uint64_t serial) {
    const auto place = std::ranges::find(envelopes_, serial, &Envelope::serial);
    if (place == envelopes_.end())
        return;
    project_.live_objects_.remove(place->get());
    envelopes_.erase(place);
}

Item& Track::add_item(double position_seconds, double length_seconds) {
    const auto finite = [](double seconds) { return std::isfinite(seconds) ? seconds : 0.0; };
    auto item = std::make_unique<Item>(*this, project_.next_serial(), finite(position_seconds),
                                       std::max(finite(length_seconds), 0.0));
    project_.add_end(item->end_seconds());
    project_.item_counts_are_stale_ = true;
    return **items_.insert(place_of(*item), std::move(item));
}

void Track::clear() {
    while (!items_.empty())
        erase_item(*items_.back());
    while (!envelopes_.empty())
        erase_envelope(envelopes_.back()->serial());
}

void Track::erase_item(const Item& item) {
    const auto place = place_of(item);
    if (place != items_.end() && place->get() == &item) {
        (*place)->set_selected(false);
        project_.remove_end(item.end_seconds());
        project_.item_counts_are_stale_ = true;
        items_.erase(place);
    }
}

std::vector<std::unique_ptr<Item>>::iterator Track::place_of(const Item& item) {
    return std::ranges::lower_bound(
        items_, item, [](const Item& left, const Item& right) { return left.comes_before(right); },
        [](const std::unique_ptr<Item>& owner) -> const Item& { return *owner; });
}

} // namespace headless::project
