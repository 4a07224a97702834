#include "headless/project/receives.hpp"

#include "headless/project/project.hpp"

#include <string>
#include <utility>

namespace headless::project {
namespace {

// Whether the node belongs to the receive before it.
bool is_part_of_receive(const chunk::Node& node) {
    const bool is_envelope = node.place() && node.place()->kind == chunk::ObjectKind::envelope;
    return is_envelope || node.token().starts_with("AUX");
}

void renumber_receives(Track& track, const NewIndices& new_indices) {
    chunk::Lines kept;
    bool is_gone = false;
    for (chunk::Node& node : track.block->lines) {
        chunk::Text* line = node.line();
        if (line && node.token() == "AUXRECV") {
            const auto source = static_cast<std::size_t>(chunk::number_at(*line, 1, -1.0));
            const std::optional<std::size_t> index =
                source < new_indices.size() ? new_indices[source] : std::optional(source);
            is_gone = !index;
            if (index && *index != source)
                chunk::set_word(*line, 1, std::to_string(*index));
        } else if (is_gone && !is_part_of_receive(node)) {
            is_gone = false;
        }
        if (!is_gone)
            kept.push_back(std::move(node));
        else if (node.place())
            track.erase_envelope(node.place()->serial);
    }
    track.block->lines = std::move(kept);
}

} // namespace

void renumber_receives(const Project& project, const NewIndices& new_indices) {
    for (const auto& track : project.tracks())
        if (track->block && chunk::find_line(track->block->lines, "AUXRECV"))
            renumber_receives(*track, new_indices);
}

} // namespace headless::project
