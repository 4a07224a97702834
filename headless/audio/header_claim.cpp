#include "headless/audio/header_claim.hpp"

#include "headless/system/files.hpp"

#include <sndfile.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <string_view>

namespace headless::audio {
namespace {

using Bytes = std::array<char, 12>;

// Maximum number of chunks to read before the samples; a file with more is not worth the search.
constexpr int max_chunks = 1000;

std::uint64_t number_at(const Bytes& bytes, std::size_t first, std::size_t count, bool is_big_endian) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t place = is_big_endian ? i : count - 1 - i;
        number = number << 8 | static_cast<unsigned char>(bytes[first + place]);
    }
    return number;
}

/// Programs that write to a pipe leave 0 or a length near 2 or 4 GiB.
bool is_left_open(std::uint64_t length) {
    constexpr std::uint64_t slack = std::uint64_t{1} << 16;
    const auto is_close_below = [&](std::uint64_t mark) { return length <= mark && length + slack >= mark; };
    return length == 0 || length >> 60 != 0 || is_close_below(std::uint64_t{1} << 31) ||
           is_close_below(std::uint64_t{1} << 32);
}

/// Walks through the chunks of a wav (RIFF, RF64) or aiff file.
class Chunks {
public:
    explicit Chunks(int descriptor) : descriptor_(descriptor) {}

    struct Samples {
        std::uint64_t position;
        std::uint64_t length;
    };

    std::optional<Samples> samples() {
        const auto head = read(0);
        if (!head || !begin(text(*head, 0)))
            return std::nullopt;
        std::uint64_t position = head->size();
        for (int count = 0; count < max_chunks; ++count) {
            const auto chunk = read(position);
            if (!chunk)
                return std::nullopt;
            const std::uint64_t length = number_at(*chunk, 4, 4, is_aiff_);
            if (is_aiff_ && text(*chunk, 0) == "SSND") // with two numbers before the samples
                return Samples{position + 16, length < 8 ? 0 : length - 8};
            if (!is_aiff_ && text(*chunk, 0) == "data")
                return Samples{position + 8, is_rf64_ ? long_length_ : length};
            if (text(*chunk, 0) == "ds64")
                read_long_length(position);
            position += 8 + length + length % 2;
        }
        return std::nullopt;
    }

private:
    static std::string_view text(const Bytes& bytes, std::size_t first) { return {bytes.data() + first, 4}; }

    bool begin(std::string_view form) {
        is_aiff_ = form == "FORM";
        is_rf64_ = form == "RF64";
        return is_aiff_ || is_rf64_ || form == "RIFF";
    }

    /// The chunk's head is followed by the lengths of the file and of the samples, 8 bytes each.
    void read_long_length(std::uint64_t position) {
        if (const auto lengths = read(position + 16))
            long_length_ = number_at(*lengths, 0, 8, false);
    }

    std::optional<Bytes> read(std::uint64_t position) const {
        Bytes bytes{};
        const bool is_possible = position < std::numeric_limits<std::int64_t>::max() / 2;
        return is_possible && system::read_at(descriptor_, bytes.data(), bytes.size(),
                                              static_cast<std::int64_t>(position)) == std::ssize(bytes)
                   ? std::optional(bytes)
                   : std::nullopt;
    }

    int descriptor_;
    bool is_aiff_ = false;
    bool is_rf64_ = false;
    std::uint64_t long_length_ = 0;
};

} // namespace

std::int64_t claimed_frames(int descriptor, std::int64_t frames) {
    if (frames == SF_COUNT_MAX)
        return 0;
    const auto samples = Chunks(descriptor).samples();
    const auto status = system::status_of(descriptor);
    if (!samples || !status || is_left_open(samples->length))
        return frames;
    const auto end = static_cast<std::uint64_t>(status->bytes);
    if (samples->position >= end || samples->length <= end - samples->position)
        return frames;
    const double part = static_cast<double>(end - samples->position) / static_cast<double>(samples->length);
    return std::max<std::int64_t>(frames, std::llround(std::min(static_cast<double>(frames) / part, 9e18)));
}

} // namespace headless::audio
