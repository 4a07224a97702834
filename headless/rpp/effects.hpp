#pragma once
// The effects of a track or a take. Each has its lines in a chain's block ("FXCHAIN"), from a line "BYPASS" up
// to the next one; what stands before the first belongs to the chain.

#include "headless/project/project.hpp"

#include <cstddef>
#include <string>
#include <vector>

namespace headless::rpp {

/// Which of an object's chains.
enum class Chain { playback, recording };

/// The effects of a chain. It is valid until lines of its object come or go.
class EffectChain {
public:
    /// The chain may be missing; it has no effects then.
    EffectChain(project::Track& track, Chain chain);
    explicit EffectChain(project::Take& take);

    std::size_t size() const { return starts_.size(); }

    // The index must be below size().

    /// The name that the user gave it, or else the one that its kind of effect has.
    std::string name(std::size_t index) const;

    /// Empty if the lines have none.
    std::string id(std::size_t index) const;

    bool is_enabled(std::size_t index) const;
    void set_enabled(std::size_t index, bool enabled);
    bool is_offline(std::size_t index) const;
    void set_offline(std::size_t index, bool offline);

    /// With all its lines and envelopes.
    void erase(std::size_t index);

private:
    void find_starts();
    std::size_t end_of(std::size_t index) const;
    chunk::Text& bypass_line(std::size_t index) const;
    const chunk::Block* block_of(std::size_t index) const;

    project::Track* track_ = nullptr; ///< whose envelopes the chain has
    chunk::Block* block_ = nullptr;
    std::vector<std::size_t> starts_;
};

} // namespace headless::rpp
