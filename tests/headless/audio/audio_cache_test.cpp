#include "headless/audio/audio_cache.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <gtest/gtest.h>

namespace headless::test {
namespace {

std::vector<float> read_all(audio::AudioCache& cache, const std::filesystem::path& file,
                            audio::FrameRange range) {
    std::vector<float> samples;
    const auto read = cache.read(file, range, [&](std::span<const float> block) -> Result<void> {
        EXPECT_LE(block.size(), audio::block_samples);
        samples.insert(samples.end(), block.begin(), block.end());
        return {};
    });
    EXPECT_TRUE(read) << read.error().message;
    return samples;
}

struct AudioCacheTest : testing::Test {
    ScratchFolder folder;
    std::filesystem::path file = folder / "sound";
    audio::AudioCache cache;
};

TEST_F(AudioCacheTest, ReadsTheSameFromMemoryAndDisk) {
    const auto written = noise(150000, 1.7);
    write_sound(file, written, 96000, 3);
    audio::AudioCache streaming(1000);
    EXPECT_EQ(cache.format(file), (audio::AudioFormat{96000, 3, 50000}));
    for (const audio::FrameRange range :
         {audio::FrameRange{0, 50000}, {777, 20000}, {5, 0}, {-2, 9000}, {-3, 2}, {49990, 20}, {100000, 2}}) {
        std::vector<float> expected;
        for (std::int64_t i = 3 * range.first_frame; i < 3 * (range.first_frame + range.frame_count); ++i)
            expected.push_back(i >= 0 && i < 150000 ? written[static_cast<std::size_t>(i)] : 0.0F);
        EXPECT_EQ(read_all(cache, file, range), expected) << range.first_frame;
        EXPECT_EQ(read_all(streaming, file, range), expected) << range.first_frame;
    }
    EXPECT_EQ(cache.resident_bytes(), written.size() * sizeof(float));
    EXPECT_EQ(streaming.resident_bytes(), 0U);
}

TEST_F(AudioCacheTest, KeepsRecentFilesWithinItsLimit) {
    const auto open_files = [] { return names_in("/proc/self/fd").size(); };
    audio::AudioCache small(800);
    const auto before = open_files();
    for (const char* name : {"first", "second", "first", "third", "second", "first"}) {
        write_sound(folder / name, std::vector(100, 0.5F), 8000);
        EXPECT_TRUE(small.format(folder / name));
        EXPECT_LE(open_files(), before + 1);
        EXPECT_EQ(read_all(small, folder / name, {0, 100}), std::vector(100, 0.5F));
        EXPECT_LE(small.resident_bytes(), 800U);
    }
    EXPECT_EQ(small.resident_bytes(), 800U);
    EXPECT_EQ(open_files(), before);
}

TEST_F(AudioCacheTest, DecodesAChangedFileAgain) {
    write_sound(file, {0.1F, 0.2F}, 8000);
    read_all(cache, file, {0, 2});
    write_sound(file, {0.5F, 0.6F, 0.7F}, 16000);
    EXPECT_EQ(cache.format(file), (audio::AudioFormat{16000, 1, 3}));
    EXPECT_EQ(read_all(cache, file, {0, 3}), (std::vector<float>{0.5F, 0.6F, 0.7F}));
    std::filesystem::remove(file);
    EXPECT_FALSE(cache.format(file));
    EXPECT_EQ(cache.resident_bytes(), 0U);
}

TEST_F(AudioCacheTest, CountsFramesIfTheHeaderClaimsTooMany) {
    write_sound(file, noise(5000, 0.5), 8000, 1, SF_FORMAT_FLAC | SF_FORMAT_PCM_16);
    auto bytes = bytes_of(file);
    bytes[21] = static_cast<char>(bytes[21] | 0x0F); // the 36 bits of the number of frames
    bytes.replace(22, 4, "\xFF\xFF\xFF\xFF");
    write_bytes(file, bytes);
    EXPECT_EQ(cache.format(file), (audio::AudioFormat{8000, 1, 5000}));
}

TEST_F(AudioCacheTest, ReportsTruncatedFiles) {
    const int flac = SF_FORMAT_FLAC | SF_FORMAT_PCM_16;
    for (const int format : {SF_FORMAT_WAV | SF_FORMAT_PCM_16, SF_FORMAT_RF64 | SF_FORMAT_PCM_16,
                             SF_FORMAT_AIFF | SF_FORMAT_PCM_16, flac}) {
        SCOPED_TRACE(format);
        write_sound(file, noise(80000, 0.5), 8000, 2, format);
        read_all(cache, file, {0, 40000});
        EXPECT_FALSE(cache.truncation(file));
        std::filesystem::resize_file(file, std::filesystem::file_size(file) - 40000);
        audio::AudioCache streaming(0);
        for (audio::AudioCache* reader : {&cache, &streaming}) {
            read_all(*reader, file, {0, 40000});
            const auto truncation = reader->truncation(file);
            ASSERT_TRUE(truncation);
            EXPECT_EQ(truncation->claimed_frames, 40000);
            EXPECT_TRUE(format == flac ? truncation->decoded_frames < 40000
                                       : truncation->decoded_frames == 30000);
        }
    }
}

TEST_F(AudioCacheTest, AcceptsStreamsOfUnknownLength) {
    write_sound(file, noise(8000, 0.5), 8000, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    for (const char* length : {"\xFF\xFF\xFF\xFF", "\xFF\xFF\xFF\x7F"}) {
        auto bytes = bytes_of(file);
        write_bytes(file, bytes.replace(40, 4, length));
        EXPECT_EQ(read_all(cache, file, {0, 8000}).size(), 8000U);
        EXPECT_FALSE(cache.truncation(file));
    }
}

TEST_F(AudioCacheTest, ReadsNonFiniteSamplesAsSilence) {
    write_sound(file, {0.5F, std::nanf(""), -HUGE_VALF, 1.5F}, 8000);
    EXPECT_EQ(read_all(cache, file, {0, 4}), (std::vector<float>{0.5F, 0.0F, 0.0F, 1.5F}));
}

} // namespace
} // namespace headless::test
