#include "headless/install/sha256.hpp"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace headless::install {
namespace {

using Word = std::uint32_t;
using State = std::array<Word, 8>;

constexpr std::size_t block_bytes = 64;
constexpr std::size_t length_bytes = 8;

constexpr State initial_state{0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                              0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

constexpr std::array<Word, 64> round_constants{
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

Word big_endian_word(std::string_view bytes) {
    Word word = 0;
    for (const char byte : bytes)
        word = word << 8 | static_cast<unsigned char>(byte);
    return word;
}

std::array<Word, 64> message_schedule(std::string_view block) {
    std::array<Word, 64> words{};
    for (std::size_t i = 0; i < 16; ++i)
        words[i] = big_endian_word(block.substr(4 * i, 4));
    for (std::size_t i = 16; i < words.size(); ++i) {
        const Word early = words[i - 15];
        const Word late = words[i - 2];
        words[i] = words[i - 16] + (std::rotr(early, 7) ^ std::rotr(early, 18) ^ early >> 3) + words[i - 7] +
                   (std::rotr(late, 17) ^ std::rotr(late, 19) ^ late >> 10);
    }
    return words;
}

void add_block(State& state, std::string_view block) {
    const std::array<Word, 64> words = message_schedule(block);
    auto [a, b, c, d, e, f, g, h] = state;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const Word chosen = (e & f) ^ (~e & g);
        const Word majority = (a & b) ^ (a & c) ^ (b & c);
        const Word first = h + (std::rotr(e, 6) ^ std::rotr(e, 11) ^ std::rotr(e, 25)) + chosen +
                           round_constants[i] + words[i];
        const Word second = (std::rotr(a, 2) ^ std::rotr(a, 13) ^ std::rotr(a, 22)) + majority;
        h = g, g = f, f = e, e = d + first;
        d = c, c = b, b = a, a = first + second;
    }
    const State change{a, b, c, d, e, f, g, h};
    for (std::size_t i = 0; i < state.size(); ++i)
        state[i] += change[i];
}

/// What follows the bytes: a one bit, zeros, and their length in bits.
std::string padded_end(std::string_view end, std::uint64_t length_bits) {
    std::string padded(end);
    padded += '\x80';
    while (padded.size() % block_bytes != block_bytes - length_bytes)
        padded += '\0';
    for (int shift = 56; shift >= 0; shift -= 8)
        padded += static_cast<char>(length_bits >> shift & 0xFF);
    return padded;
}

} // namespace

std::string sha256(std::string_view bytes) {
    State state = initial_state;
    const std::uint64_t length_bits = std::uint64_t{bytes.size()} * 8;
    for (; bytes.size() >= block_bytes; bytes.remove_prefix(block_bytes))
        add_block(state, bytes.substr(0, block_bytes));
    const std::string end = padded_end(bytes, length_bits);
    for (std::size_t i = 0; i < end.size(); i += block_bytes)
        add_block(state, std::string_view(end).substr(i, block_bytes));
    std::string digits;
    for (const Word word : state)
        for (int shift = 28; shift >= 0; shift -= 4)
            digits += "0123456789abcdef"[word >> shift & 0xF];
    return digits;
}

} // namespace headless::install
