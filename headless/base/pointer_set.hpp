#pragma once
// A set of addresses with lookups of a few nanoseconds: every handle from outside is looked up in one.

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace headless {

/// Open addressing, at most half full. Null is never in it.
class PointerSet {
public:
    bool contains(const void* address) const { return address && slots_[slot_of(address)] == address; }

    void insert(const void* address) {
        if (!address || contains(address))
            return;
        if (2 * ++size_ > slots_.size())
            grow();
        slots_[slot_of(address)] = address;
    }

    void erase(const void* address) {
        if (!contains(address))
            return;
        std::size_t hole = slot_of(address);
        slots_[hole] = nullptr;
        --size_;
        // Entries that were displaced by this one move up.
        for (std::size_t slot = next(hole); slots_[slot]; slot = next(slot)) {
            const void* moved = std::exchange(slots_[slot], nullptr);
            slots_[slot_of(moved)] = moved;
        }
    }

private:
    // The slot that holds the address, or in which it would be inserted.
    std::size_t slot_of(const void* address) const {
        constexpr std::uint64_t golden_ratio = 0x9E3779B97F4A7C15U; // spreads evenly spaced addresses
        std::size_t slot = (reinterpret_cast<std::uintptr_t>(address) * golden_ratio) >> shift_;
        while (slots_[slot] && slots_[slot] != address)
            slot = next(slot);
        return slot;
    }

    std::size_t next(std::size_t slot) const { return (slot + 1) & (slots_.size() - 1); }

    void grow() {
        std::vector<const void*> old(2 * slots_.size());
        old.swap(slots_);
        --shift_;
        for (const void* address : old)
            if (address)
                slots_[slot_of(address)] = address;
    }

    std::vector<const void*> slots_ = std::vector<const void*>(16);
    unsigned shift_ = 60; ///< leaves as many bits as the slots have numbers
    std::size_t size_ = 0;
};

} // namespace headless
