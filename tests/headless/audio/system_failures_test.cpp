// Reads of audio files and syncs of renders that fail: this program's own calls of the system do so on demand.

#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/published_render.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <cerrno>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

off_t reads_fail_behind = -1; // byte of the file; below 0 none fails
bool syncs_fail = false;

int fail() {
    errno = EIO;
    return -1;
}

} // namespace

extern "C" ssize_t pread(int descriptor, void* bytes, std::size_t count, off_t position) {
    const bool is_spoilt = reads_fail_behind >= 0 && position + static_cast<off_t>(count) > reads_fail_behind;
    return is_spoilt ? fail() : syscall(SYS_pread64, descriptor, bytes, count, position);
}

extern "C" int fsync(int descriptor) {
    return syncs_fail ? fail() : static_cast<int>(syscall(SYS_fsync, descriptor));
}

namespace headless::test {
namespace {

TEST(SystemFailures, OfReadsAreNotTheEndOfAFile) {
    const ScratchFolder folder;
    const std::filesystem::path source = folder / "source";
    const std::pair<const char*, int> formats[] = {{"wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16},
                                                   {"flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16},
                                                   {"ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS}};
    for (const auto& [name, format] : formats) {
        SCOPED_TRACE(name);
        write_sound(source, noise(200000, 0.5), 48000, 1, format);
        const auto size = static_cast<off_t>(std::filesystem::file_size(source));
        for (const std::size_t limit : {audio::AudioCache::default_byte_limit, std::size_t{0}}) {
            for (const off_t place : {off_t{0}, size / 4, size / 2, size - 1}) {
                audio::AudioCache cache(limit);
                reads_fail_behind = place;
                const auto read = cache.read(source, {0, 200000}, [](auto) { return Result<void>(); });
                reads_fail_behind = -1;
                EXPECT_THAT(read, fails_telling("source: Input/output error")) << place;
            }
        }
    }
    reads_fail_behind = 0;
    EXPECT_THAT(audio::is_own_file(source), fails_telling("source: Input/output error"));
    reads_fail_behind = -1;
}

TEST(SystemFailures, OfASyncLeavesNoRender) {
    const ScratchFolder folder;
    const auto source = write_sound(folder / "source", noise(50000, 0.5), 48000);
    audio::AudioCache cache;
    syncs_fail = true;
    const auto rendered =
        test::render_published(cache, source, {0, 50000}, audio::GainCurve(), folder / "target.wav");
    syncs_fail = false;
    EXPECT_THAT(rendered, fails_telling("target.wav: Input/output error"));
    EXPECT_THAT(names_in(folder.path), testing::ElementsAre("source"));
}

} // namespace
} // namespace headless::test
