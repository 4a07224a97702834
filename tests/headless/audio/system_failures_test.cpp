// Reads, writes and syncs that fail in the middle of an audio file: this program's own calls of the system
// fail on demand.

#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/published_render.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <cerrno>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

off_t reads_fail_behind = -1; // byte of the file; below 0 none fails
int writes_until_failure = -1;
bool syncs_fail = false;

int fails() {
    errno = EIO;
    return -1;
}

} // namespace

extern "C" {

ssize_t pread(int descriptor, void* bytes, std::size_t count, off_t position) {
    const bool is_spoilt = reads_fail_behind >= 0 && position + static_cast<off_t>(count) > reads_fail_behind;
    return is_spoilt ? fails() : syscall(SYS_pread64, descriptor, bytes, count, position);
}

ssize_t pwrite(int descriptor, const void* bytes, std::size_t count, off_t position) {
    const bool is_spoilt = writes_until_failure >= 0 && writes_until_failure-- == 0;
    return is_spoilt ? fails() : syscall(SYS_pwrite64, descriptor, bytes, count, position);
}

int fsync(int descriptor) { return syncs_fail ? fails() : static_cast<int>(syscall(SYS_fsync, descriptor)); }
}

namespace headless::test {
namespace {

using testing::ElementsAre;

struct SystemFailures : testing::Test {
    ~SystemFailures() override {
        reads_fail_behind = -1;
        writes_until_failure = -1;
        syncs_fail = false;
    }

    ScratchFolder folder;
    const std::filesystem::path source = folder / "source";
};

TEST_F(SystemFailures, OfReadsAreNotTheEndOfAFile) {
    const std::pair<const char*, int> formats[] = {{"wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16},
                                                   {"float wav", float_wav},
                                                   {"aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_24},
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
}

TEST_F(SystemFailures, OfWritesLeaveNoRender) {
    write_sound(source, noise(50000, 0.5), 48000);
    audio::AudioCache cache;
    const auto render_it = [&] {
        return test::render_published(cache, source, {0, 50000}, audio::GainCurve(0.5),
                                      folder / "target.wav");
    };
    int failures = 0;
    for (bool is_whole = false; !is_whole; ++failures) {
        writes_until_failure = failures;
        const auto rendered = render_it();
        is_whole = writes_until_failure >= 0;
        EXPECT_EQ(rendered.has_value(), is_whole) << failures;
        EXPECT_EQ(names_in(folder.path).size(), is_whole ? 2U : 1U) << failures;
    }
    EXPECT_GT(failures, 4);
    reads_fail_behind = 0;
    EXPECT_THAT(audio::is_own_file(folder / "target.wav"), fails_telling("target.wav: Input/output error"));
    reads_fail_behind = -1;
    EXPECT_EQ(audio::is_own_file(folder / "target.wav"), true);
    std::filesystem::remove(folder / "target.wav");
    syncs_fail = true;
    EXPECT_THAT(render_it(), fails_telling("target.wav: Input/output error"));
    EXPECT_THAT(names_in(folder.path), ElementsAre("source"));
}

} // namespace
} // namespace headless::test
