#include "headless/audio/audio_store.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace headless::test {
namespace {

std::vector<float> read_all(AudioStore& store, const std::filesystem::path& file, FrameRange range) {
    std::vector<float> samples;
    const auto read = store.read(file, range, [&](std::span<const float> block) -> Result<void> {
        EXPECT_LE(block.size(), block_samples);
        samples.insert(samples.end(), block.begin(), block.end());
        return {};
    });
    EXPECT_TRUE(read) << read.error().message;
    return samples;
}

struct Encoding {
    const char* name;
    int format;
    double tolerance;
    int sample_rate;
    int channels;
};

constexpr Encoding encodings[] = {{"8 bits", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 0.02, 8000, 1},
                                  {"16 bits", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 7e-5, 11025, 2},
                                  {"24 bits", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 2e-7, 44100, 6},
                                  {"32 bits", SF_FORMAT_WAV | SF_FORMAT_PCM_32, 1e-7, 48000, 1},
                                  {"float", float_wav, 0.0, 192000, 8},
                                  {"double", SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 0.0, 96000, 3},
                                  {"rf64", SF_FORMAT_RF64 | SF_FORMAT_PCM_24, 2e-7, 48000, 2},
                                  {"aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_24, 2e-7, 44100, 2},
                                  {"flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 2e-7, 192000, 8}};

TEST(AudioStore, reads_each_encoding_frame_by_frame_as_it_was_written) {
    const ScratchFolder folder;
    for (const auto& [name, encoding, tolerance, sample_rate, channels] : encodings) {
        SCOPED_TRACE(name);
        const auto written = noise(30000 * static_cast<std::size_t>(channels), 0.9);
        const auto file = write_sound(folder / name, written, sample_rate, channels, encoding);
        AudioStore store;
        EXPECT_EQ(store.format(file), (AudioFormat{sample_rate, channels, 30000}));
        const auto samples = read_all(store, file, {0, 30000});
        ASSERT_EQ(samples.size(), written.size());
        for (std::size_t i = 0; i < samples.size(); ++i) {
            ASSERT_NEAR(samples[i], written[i], tolerance) << i;
        }
    }
}

TEST(AudioStore, reads_the_same_from_memory_and_from_disk_with_silence_beyond_both_ends) {
    const ScratchFolder folder;
    const auto written = noise(150000, 1.7);
    const auto file = write_sound(folder / "sound.wav", written, 96000, 3);
    AudioStore roomy;
    AudioStore streaming(1000);
    for (const FrameRange range :
         {FrameRange{0, 50000}, {777, 20000}, {5, 0}, {-2, 9000}, {-3, 2}, {49990, 20}, {100000, 2}}) {
        std::vector<float> expected;
        for (std::int64_t i = 3 * range.first_frame; i < 3 * (range.first_frame + range.frame_count); ++i) {
            expected.push_back(i >= 0 && i < 150000 ? written[static_cast<std::size_t>(i)] : 0.0F);
        }
        EXPECT_EQ(read_all(roomy, file, range), expected) << range.first_frame;
        EXPECT_EQ(read_all(streaming, file, range), expected) << range.first_frame;
    }
    EXPECT_EQ(roomy.resident_bytes(), written.size() * sizeof(float));
    EXPECT_EQ(streaming.resident_bytes(), 0U);
}

TEST(AudioStore, keeps_the_files_used_last_within_its_limit_and_holds_none_open) {
    const ScratchFolder folder;
    const auto open_files = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    write_bytes(folder / "text", "not a sound\n");
    AudioStore store(800);
    const auto before = open_files();
    for (const char* name : {"first", "second", "first", "third", "second", "first"}) {
        const auto file = write_sound(folder / name, std::vector(100, 0.5F), 8000);
        EXPECT_FALSE(store.format(folder / "text"));
        EXPECT_TRUE(store.format(file));
        EXPECT_LE(open_files(), before + 1);
        EXPECT_EQ(read_all(store, file, {0, 100}), std::vector(100, 0.5F));
        EXPECT_LE(store.resident_bytes(), 800U);
    }
    EXPECT_EQ(store.resident_bytes(), 800U);
    EXPECT_EQ(open_files(), before);
}

TEST(AudioStore, decodes_a_changed_file_anew) {
    const ScratchFolder folder;
    const auto file = write_sound(folder / "sound.wav", {0.1F, 0.2F}, 8000);
    AudioStore store;
    read_all(store, file, {0, 2});
    write_sound(file, {0.5F, 0.6F, 0.7F}, 16000);
    EXPECT_EQ(store.format(file), (AudioFormat{16000, 1, 3}));
    EXPECT_EQ(read_all(store, file, {0, 3}), (std::vector<float>{0.5F, 0.6F, 0.7F}));
    std::filesystem::remove(file);
    EXPECT_FALSE(store.format(file));
    EXPECT_EQ(store.resident_bytes(), 0U);
}

TEST(AudioStore, reads_what_a_truncated_file_still_holds) {
    const ScratchFolder folder;
    const auto written = noise(20000, 0.5);
    AudioStore store;
    for (const int format : {float_wav, SF_FORMAT_FLAC | SF_FORMAT_PCM_24}) {
        const auto file = write_sound(folder / "sound", written, 8000, 1, format);
        std::filesystem::resize_file(file, std::filesystem::file_size(file) / 2);
        const auto samples = read_all(store, file, {0, 20000});
        for (std::size_t i = 0; i < 5000; ++i) {
            ASSERT_NEAR(samples[i], written[i], 1e-6);
        }
        EXPECT_EQ(samples.back(), 0.0F);
        EXPECT_LT(store.format(file).value().frames, 11000);
    }
}

TEST(AudioStore, does_not_believe_a_header_that_claims_more_than_the_file_can_hold) {
    const ScratchFolder folder;
    const auto file = folder / "sound.flac";
    write_sound(file, noise(5000, 0.5), 8000, 1, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    auto bytes = bytes_of(file);
    bytes[21] = static_cast<char>(bytes[21] | 0x0F); // the 36 bits of the number of frames
    bytes.replace(22, 4, "\xFF\xFF\xFF\xFF");
    write_bytes(file, bytes);
    EXPECT_EQ(AudioStore().format(file), (AudioFormat{8000, 1, 5000}));
}

TEST(AudioStore, reads_samples_that_are_no_numbers_as_silence) {
    const ScratchFolder folder;
    using Limits = std::numeric_limits<float>;
    const auto file =
        write_sound(folder / "sound.wav", {0.5F, Limits::quiet_NaN(), -Limits::infinity(), 1.5F}, 8000);
    AudioStore store;
    EXPECT_EQ(read_all(store, file, {0, 4}), (std::vector<float>{0.5F, 0.0F, 0.0F, 1.5F}));
}

} // namespace
} // namespace headless::test
