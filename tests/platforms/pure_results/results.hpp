#pragma once
// The text that the program writes: one line for each result, in a form that shows every bit and byte.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace pure_results {

/// Returns a text in quotes, with bytes outside printable ASCII as \xNN.
std::string shown(std::string_view text);
std::string shown(const std::vector<std::string>& texts);

/// Returns the shortest digits that give the same number again.
std::string shown(double value);

/// Returns twelve digits: what exp and log10 agree on. Their last bits depend on the C library and on whether the
/// processor has fused multiply-adds.
std::string shown_rounded(double value);

/// Numbers that are the same on every platform. The standard's distributions are not.
class Numbers {
public:
    explicit Numbers(std::uint64_t seed) : state_(seed) {}

    /// Returns a number from 0 to `bound` - 1.
    std::size_t below(std::size_t bound);

    /// Returns a number in [low, high).
    double between(double low, double high);

private:
    std::uint32_t next();
    std::uint64_t state_;
};

/// The results of one family of functions.
class Results {
public:
    void add(std::string_view line) { text_.append(line).append("\n"); }

    /// Adds a result that is too many to be shown to the sum of the current sweep.
    void sweep(std::string_view line);

    /// Adds a line with count and sum of the sweep, and starts the next.
    void end_sweep(std::string_view name);

    const std::string& text() const { return text_; }

private:
    static constexpr std::uint64_t empty_sum = 0xcbf29ce484222325; // FNV-1a

    std::string text_;
    std::uint64_t sum_ = empty_sum;
    std::size_t count_ = 0;
};

// One function per family.
void add_numbers(Results& results);
void add_strings(Results& results);
void add_patterns(Results& results);
void add_json(Results& results);
void add_records(Results& results);
void add_levels_and_gains(Results& results);

/// Writes below the folder `scratch`, which is empty and the current one.
void add_files(Results& results);

} // namespace pure_results
