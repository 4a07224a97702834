#include "headless/rpp/copies.hpp"

#include "headless/rpp/state.hpp"

#include <algorithm>
#include <cstddef>

namespace headless::rpp {

void renew_effects(chunk::Lines& lines, project::Project& project) {
    for (chunk::Node& node : lines)
        if (chunk::Block* block = node.block())
            renew_effects(block->lines, project);
        else if (chunk::Text* line = node.line(); line && node.token() == "FXID")
            chunk::set_word(*line, 1, chunk::text_of(project.guids.next()));
}

void renew_ids(project::Item& item) {
    project::Project& project = item.track().project();
    item.id = project.guids.next();
    for (const auto& take : item.takes()) {
        if (take->is_empty)
            continue;
        take->id = project.guids.next();
        for (const auto& envelope : take->envelopes())
            envelope->id = project.guids.next();
        for (chunk::Node& node : take->lines)
            if (node.block() && node.token() == "TAKEFX")
                renew_effects(node.block()->lines, project);
    }
}

void copy_formats(const project::Item& from, const project::Item& to) {
    for (std::size_t i = 0; i < std::min(from.takes().size(), to.takes().size()); ++i) {
        const project::Source& source = from.take(i)->source.root();
        project::Source& copy = to.take(i)->source.root();
        copy.sample_rate = source.sample_rate;
        copy.channels = source.channels;
        copy.frames = source.frames;
    }
}

project::Item* add_item(project::Track& track, std::string_view state) {
    project::Item& item = track.add_item(0.0, 0.0);
    if (!set_state(item, state)) {
        track.erase_item(item);
        return nullptr;
    }
    renew_ids(item);
    return &item;
}

project::Item& copy_item(project::Item& item, project::Track& to) {
    project::Item& copy = *add_item(to, state_of(item));
    copy_formats(item, copy);
    return copy;
}

} // namespace headless::rpp
