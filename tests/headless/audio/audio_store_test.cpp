#include "headless/audio/audio_store.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>
#include <sys/stat.h>

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

struct EncodingCase {
    const char* name;
    int format;
    double tolerance;
};

class Encoding : public testing::TestWithParam<EncodingCase> {};

TEST_P(Encoding, is_read_frame_by_frame_as_it_was_written) {
    const ScratchFolder folder;
    const auto written = noise(60000, 0.9);
    const auto file = write_sound(folder / "sound", written, 44100, 2, GetParam().format);
    AudioStore store;
    EXPECT_EQ(store.format(file), (AudioFormat{44100, 2, 30000}));
    const auto samples = read_all(store, file, {0, 30000});
    ASSERT_EQ(samples.size(), written.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        ASSERT_NEAR(samples[i], written[i], GetParam().tolerance) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(AudioStore, Encoding,
                         testing::Values(EncodingCase{"wav_8_bit", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 0.02},
                                         EncodingCase{"wav_16_bit", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 7e-5},
                                         EncodingCase{"wav_24_bit", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 2e-7},
                                         EncodingCase{"wav_32_bit", SF_FORMAT_WAV | SF_FORMAT_PCM_32, 1e-7},
                                         EncodingCase{"wav_float", float_wav, 0.0},
                                         EncodingCase{"wav_double", SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 0.0},
                                         EncodingCase{"rf64_24_bit", SF_FORMAT_RF64 | SF_FORMAT_PCM_24, 2e-7},
                                         EncodingCase{"aiff_24_bit", SF_FORMAT_AIFF | SF_FORMAT_PCM_24, 2e-7},
                                         EncodingCase{"flac_24_bit", SF_FORMAT_FLAC | SF_FORMAT_PCM_24,
                                                      2e-7}),
                         [](const auto& row) { return row.param.name; });

TEST(AudioStore, reads_the_same_from_memory_and_from_disk) {
    const ScratchFolder folder;
    const auto written = noise(150000, 1.7);
    const auto file = write_sound(folder / "sound.wav", written, 96000, 3);
    AudioStore roomy;
    AudioStore streaming(1000);
    for (const FrameRange range : {FrameRange{0, 50000}, {777, 20000}, {49990, 10}, {5, 0}}) {
        const auto resident = read_all(roomy, file, range);
        EXPECT_EQ(resident, read_all(streaming, file, range));
        const auto first = written.begin() + range.first_frame * 3;
        EXPECT_EQ(resident, std::vector<float>(first, first + range.frame_count * 3));
    }
    EXPECT_EQ(roomy.resident_bytes(), written.size() * sizeof(float));
    EXPECT_EQ(streaming.resident_bytes(), 0U);
}

TEST(AudioStore, is_silent_beyond_both_ends_of_the_audio) {
    const ScratchFolder folder;
    const auto file = write_sound(folder / "sound.wav", {0.1F, 0.2F, 0.3F}, 8000);
    for (const std::size_t limit : {std::size_t{0}, AudioStore::default_byte_limit}) {
        AudioStore store(limit);
        EXPECT_EQ(read_all(store, file, {-2, 7}), (std::vector<float>{0, 0, 0.1F, 0.2F, 0.3F, 0, 0}));
        EXPECT_EQ(read_all(store, file, {-3, 2}), (std::vector<float>{0, 0}));
        EXPECT_EQ(read_all(store, file, {100000, 2}), (std::vector<float>{0, 0}));
    }
}

TEST(AudioStore, keeps_the_files_used_last_within_its_limit) {
    const ScratchFolder folder;
    const std::vector<float> samples(100, 0.5F);
    const auto first = write_sound(folder / "first.wav", samples, 8000);
    const auto second = write_sound(folder / "second.wav", samples, 8000);
    const auto third = write_sound(folder / "third.wav", samples, 8000);
    AudioStore store(2 * samples.size() * sizeof(float));
    for (const auto& file : {first, second, first, third, second, first}) {
        EXPECT_EQ(read_all(store, file, {0, 100}), samples);
        EXPECT_LE(store.resident_bytes(), 800U);
    }
    EXPECT_EQ(store.resident_bytes(), 800U);
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
        const auto whole = write_sound(folder / "whole", written, 8000, 1, format);
        const auto bytes = bytes_of(whole);
        write_bytes(folder / "half", bytes.substr(0, bytes.size() / 2));
        const auto samples = read_all(store, folder / "half", {0, 20000});
        for (std::size_t i = 0; i < 5000; ++i) {
            ASSERT_NEAR(samples[i], written[i], 1e-6);
        }
        EXPECT_EQ(samples.back(), 0.0F);
        const auto format_now = store.format(folder / "half");
        ASSERT_TRUE(format_now);
        EXPECT_LT(format_now->frames, 11000);
    }
}

TEST(AudioStore, does_not_believe_a_header_that_claims_more_than_the_file_can_hold) {
    const ScratchFolder folder;
    write_sound(folder / "true", noise(5000, 0.5), 8000, 1, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    auto bytes = bytes_of(folder / "true");
    bytes[21] = static_cast<char>(bytes[21] | 0x0F); // the 36 bits of the number of frames
    bytes.replace(22, 4, "\xFF\xFF\xFF\xFF");
    write_bytes(folder / "lying", bytes);
    AudioStore store;
    EXPECT_EQ(store.format(folder / "lying"), (AudioFormat{8000, 1, 5000}));
}

TEST(AudioStore, reads_samples_that_are_no_numbers_as_silence) {
    const ScratchFolder folder;
    const float infinity = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const auto file = write_sound(folder / "sound.wav", {0.5F, nan, -infinity, 1.5F}, 8000);
    AudioStore store;
    EXPECT_EQ(read_all(store, file, {0, 4}), (std::vector<float>{0.5F, 0.0F, 0.0F, 1.5F}));
}

struct UnreadableCase {
    const char* name;
    void (*make)(const std::filesystem::path&);
    const char* reason;
};

class Unreadable : public testing::TestWithParam<UnreadableCase> {};

TEST_P(Unreadable, is_a_failure_that_names_the_path_and_the_reason) {
    const ScratchFolder folder;
    const auto file = folder / "a 'name'.wav";
    GetParam().make(file);
    AudioStore store;
    const auto format = store.format(file);
    ASSERT_FALSE(format);
    EXPECT_NE(format.error().message.find(file.string()), std::string::npos) << format.error().message;
    EXPECT_NE(format.error().message.find(GetParam().reason), std::string::npos) << format.error().message;
    const auto read = store.read(file, {0, 1}, [](auto) -> Result<void> { return {}; });
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().message, format.error().message);
}

INSTANTIATE_TEST_SUITE_P(
    AudioStore, Unreadable,
    testing::Values(
        UnreadableCase{"missing", [](const auto&) {}, "No such file"},
        UnreadableCase{"folder", [](const auto& path) { std::filesystem::create_directory(path); }, "folder"},
        UnreadableCase{"pipe", [](const auto& path) { ASSERT_EQ(mkfifo(path.c_str(), 0600), 0); }, "regular"},
        UnreadableCase{"device", [](const auto& path) { std::filesystem::create_symlink("/dev/zero", path); },
                       "regular"},
        UnreadableCase{"empty", [](const auto& path) { write_bytes(path, ""); }, "is empty"},
        UnreadableCase{"text", [](const auto& path) { write_bytes(path, "not a sound\n"); }, "no audio file"},
        UnreadableCase{"cut_in_the_header",
                       [](const auto& path) {
                           write_bytes(path, bytes_of(write_sound(path, {0.0F}, 8000)).substr(0, 20));
                       },
                       "no audio file"},
        UnreadableCase{"without_frames", [](const auto& path) { write_sound(path, {}, 8000); }, "no audio"}),
    [](const auto& row) { return row.param.name; });

TEST(AudioStore, holds_one_file_open_at_most) {
    const ScratchFolder folder;
    const auto open_files = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                             std::filesystem::directory_iterator());
    };
    AudioStore store;
    const auto before = open_files();
    for (int i = 0; i < 10; ++i) {
        write_bytes(folder / "text.wav", "not a sound\n");
        EXPECT_FALSE(store.format(folder / "text.wav"));
        EXPECT_TRUE(store.format(write_sound(folder / std::to_string(i), {0.5F}, 8000)));
        EXPECT_TRUE(store.format(folder / "0"));
        EXPECT_LE(open_files(), before + 1);
    }
    EXPECT_EQ(read_all(store, folder / "5", {0, 1}), std::vector{0.5F});
    EXPECT_EQ(open_files(), before);
}

TEST(AudioStore, passes_on_the_failure_of_a_visitor_and_stops) {
    const ScratchFolder folder;
    const auto file = write_sound(folder / "sound.wav", noise(3 * block_samples, 0.5), 8000);
    AudioStore store;
    int visits = 0;
    const auto read = store.read(file, {0, 3 * block_samples}, [&](auto) -> Result<void> {
        ++visits;
        return tl::unexpected(Failure{"enough"});
    });
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().message, "enough");
    EXPECT_EQ(visits, 1);
}

} // namespace
} // namespace headless::test
