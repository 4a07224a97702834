#include "headless/rpp/chunk_reader.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace headless::rpp {
namespace {

constexpr std::string_view blanks = " \t";

std::string_view trimmed(std::string_view line) {
    const std::size_t begin = line.find_first_not_of(blanks);
    const std::size_t end = line.find_last_not_of(" \t\r");
    return begin > end || begin == line.npos ? std::string_view{} : line.substr(begin, end - begin + 1);
}

// Removes the first word from the line, which must begin with it. A quote that is never closed includes the
// rest of the line.
std::string_view cut_word(std::string_view& line) {
    const bool is_quoted = line.front() == '"' || line.front() == '\'' || line.front() == '`';
    const std::size_t begin = is_quoted ? 1 : 0;
    const std::size_t end =
        std::min(is_quoted ? line.find(line.front(), 1) : line.find_first_of(blanks), line.size());
    const std::string_view word = line.substr(begin, end - begin);
    line.remove_prefix(std::min(end + begin, line.size()));
    line.remove_prefix(std::min(line.find_first_not_of(blanks), line.size()));
    return word;
}

} // namespace

bool ChunkReader::next() {
    if (begins_block_)
        skip_block();
    if (!next_line())
        return false;
    return !ends_block_;
}

// Counts instead of recursing, as blocks may be nested to any depth.
void ChunkReader::skip_block() {
    const std::size_t outside = depth_ - 1;
    while (depth_ > outside && next_line()) {
    }
}

bool ChunkReader::next_line() {
    begins_block_ = false;
    ends_block_ = false;
    name_.clear();
    words_.clear();
    while (!failure_ && !rest_.empty()) {
        const std::size_t length = std::min(rest_.find('\n'), rest_.size());
        line_ = rest_.substr(0, length);
        line_.remove_suffix(line_.ends_with('\r') ? 1 : 0);
        line_.remove_prefix(std::min(line_.find_first_not_of(blanks), line_.size()));
        const std::string_view line = trimmed(line_);
        rest_.remove_prefix(std::min(length + 1, rest_.size()));
        ++line_number_;
        if (!line.empty()) {
            split(line);
            return !failure_;
        }
    }
    if (depth_ > 0)
        fail("the file ends within a block");
    return false;
}

void ChunkReader::split(std::string_view line) {
    ends_block_ = line == ">";
    begins_block_ = line.front() == '<';
    if (ends_block_ && depth_ == 0) {
        fail("'>' ends a block that never began");
        return;
    }
    depth_ += begins_block_ ? 1U : 0U;
    depth_ -= ends_block_ ? 1U : 0U;
    line.remove_prefix(begins_block_ ? 1 : 0);
    line = trimmed(line);
    if (!line.empty())
        name_ = cut_word(line);
    while (!line.empty())
        words_.emplace_back(cut_word(line));
}

std::string ChunkReader::text(std::size_t place, std::string_view otherwise) const {
    return place < words_.size() ? words_[place] : std::string(otherwise);
}

double ChunkReader::number(std::size_t place, double otherwise) {
    if (place >= words_.size())
        return otherwise;
    const std::string& word = words_[place];
    double value = 0.0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size() || !std::isfinite(value)) {
        fail("'" + word + "' is no number");
        return otherwise;
    }
    return value;
}

int ChunkReader::integer(std::size_t place, int otherwise) {
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(number(place, otherwise), lowest, highest));
}

void ChunkReader::fail(std::string_view reason) {
    if (!failure_)
        failure_ = Failure{"line " + std::to_string(line_number_) + ": " + std::string(reason)};
}

} // namespace headless::rpp
