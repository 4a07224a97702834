#include "headless/rpp/effects.hpp"

#include "headless/project/receives.hpp"

#include <algorithm>
#include <array>
#include <string_view>

namespace headless::rpp {
namespace {

constexpr std::string_view first_token = "BYPASS";
constexpr std::size_t bypass_word = 1;
constexpr std::size_t offline_word = 2;

/// Where an effect's block has its names.
struct EffectKind {
    std::string_view token;
    std::size_t alias_word;  ///< what the user called it
    std::string_view prefix; ///< of the other name, word 1
};

constexpr std::array effect_kinds{EffectKind{"VST", 4, ""},       EffectKind{"AU", 4, ""},
                                  EffectKind{"CLAP", 3, ""},      EffectKind{"LV2", 3, ""},
                                  EffectKind{"DX", 3, ""},        EffectKind{"JS", 2, "JS: "},
                                  EffectKind{"CONTAINER", 2, ""}, EffectKind{"VIDEO_EFFECT", 2, ""}};

const EffectKind* kind_of(const chunk::Node& node) {
    const auto kind = std::ranges::find(effect_kinds, node.token(), &EffectKind::token);
    return node.block() && kind != effect_kinds.end() ? &*kind : nullptr;
}

void erase_envelopes(project::Track& track, const chunk::Node& node) {
    if (node.place())
        track.erase_envelope(node.place()->serial);
    else if (const chunk::Block* block = node.block())
        for (const chunk::Node& inner : block->lines)
            erase_envelopes(track, inner);
}

} // namespace

EffectChain::EffectChain(project::Track& track, Chain chain) : track_(&track) {
    const bool is_master = &track == &track.project().master();
    const std::string_view playback = is_master ? "MASTERFXLIST" : "FXCHAIN";
    if (chunk::Lines* lines = project::file_lines_of(track))
        block_ = chunk::find_block(*lines, chain == Chain::playback ? playback : "FXCHAIN_REC");
    find_starts();
}

EffectChain::EffectChain(project::Take& take)
    : track_(&take.item().track()), block_(chunk::find_block(take.lines, "TAKEFX")) {
    find_starts();
}

void EffectChain::find_starts() {
    starts_.clear();
    for (std::size_t place = 0; block_ && place < block_->lines.size(); ++place)
        if (block_->lines[place].line() && block_->lines[place].token() == first_token)
            starts_.push_back(place);
}

std::size_t EffectChain::end_of(std::size_t index) const {
    return index + 1 < starts_.size() ? starts_[index + 1] : block_->lines.size();
}

chunk::Text& EffectChain::bypass_line(std::size_t index) const {
    return *block_->lines[starts_[index]].line();
}

const chunk::Block* EffectChain::block_of(std::size_t index) const {
    for (std::size_t place = starts_[index]; place < end_of(index); ++place)
        if (kind_of(block_->lines[place]))
            return block_->lines[place].block();
    return nullptr;
}

std::string EffectChain::name(std::size_t index) const {
    const chunk::Block* block = block_of(index);
    if (!block)
        return "";
    const EffectKind& kind =
        *std::ranges::find(effect_kinds, chunk::token(block->head.content()), &EffectKind::token);
    const std::string_view alias = chunk::text_at(block->head, kind.alias_word);
    return alias.empty() ? std::string(kind.prefix).append(chunk::text_at(block->head, 1))
                         : std::string(alias);
}

std::string EffectChain::id(std::size_t index) const {
    for (std::size_t place = starts_[index]; place < end_of(index); ++place)
        if (const chunk::Text* line = block_->lines[place].line();
            line && chunk::token(line->content()) == "FXID")
            return std::string(chunk::text_at(*line, 1));
    return "";
}

bool EffectChain::is_enabled(std::size_t index) const {
    return chunk::number_at(bypass_line(index), bypass_word, 0.0) == 0.0;
}

void EffectChain::set_enabled(std::size_t index, bool enabled) {
    if (enabled != is_enabled(index))
        chunk::set_word(bypass_line(index), bypass_word, enabled ? "0" : "1");
}

bool EffectChain::is_offline(std::size_t index) const {
    return chunk::number_at(bypass_line(index), offline_word, 0.0) != 0.0;
}

void EffectChain::set_offline(std::size_t index, bool offline) {
    if (offline != is_offline(index))
        chunk::set_word(bypass_line(index), offline_word, offline ? "1" : "0");
}

void EffectChain::erase(std::size_t index) {
    const auto begin = block_->lines.begin() + static_cast<std::ptrdiff_t>(starts_[index]);
    const auto end = block_->lines.begin() + static_cast<std::ptrdiff_t>(end_of(index));
    std::for_each(begin, end, [&](const chunk::Node& node) { erase_envelopes(*track_, node); });
    block_->lines.erase(begin, end);
    find_starts();
}

} // namespace headless::rpp
