#include "headless/jobs/project_lines.hpp"

namespace headless::jobs {
namespace {

bool is_master(const project::Track& track) { return &track == &track.project().master(); }

// Each effect begins with its "BYPASS": bypassed, offline.
void add_effects(EffectCount& count, const chunk::Lines& lines) {
    for (const chunk::Node& node : lines) {
        const std::string_view token = node.token();
        if (const chunk::Text* line = node.line(); line && token == "BYPASS") {
            ++count.all;
            const bool is_off =
                chunk::number_at(*line, 1, 0.0) != 0.0 || chunk::number_at(*line, 2, 0.0) != 0.0;
            count.active += is_off ? 0 : 1;
        } else if (node.block() && token == "CONTAINER") {
            add_effects(count, node.block()->lines);
        }
    }
}

} // namespace

EffectCount count_effects(const chunk::Lines& lines, std::string_view chain) {
    EffectCount count;
    if (const chunk::Block* block = chunk::find_block(lines, chain))
        add_effects(count, block->lines);
    return count;
}

const chunk::Lines& lines_of(const project::Track& track) {
    static const chunk::Lines none;
    if (is_master(track))
        return track.project().source ? track.project().source->document.root.lines : none;
    return track.block ? track.block->lines : none;
}

bool has_active_effects(const project::Track& track) {
    const chunk::Text* line = chunk::find_line(lines_of(track), is_master(track) ? "MASTER_FX" : "FX");
    return !line || chunk::number_at(*line, 1, 1.0) != 0.0;
}

std::string_view effect_chain_of(const project::Track& track) {
    return is_master(track) ? "MASTERFXLIST" : "FXCHAIN";
}

} // namespace headless::jobs
