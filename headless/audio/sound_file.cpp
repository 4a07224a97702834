#include "headless/audio/sound_file.hpp"

#include "headless/audio/header_claim.hpp"
#include "headless/base/atomic_file.hpp"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace headless::audio {
namespace {

tl::unexpected<Failure> failure(const std::filesystem::path& file, const std::string& reason) {
    return tl::unexpected(path_failure(file, reason));
}

} // namespace

Result<FileStamp> stamp_of(const std::filesystem::path& file) {
    struct stat status {};
    if (stat(file.c_str(), &status) != 0)
        return tl::unexpected(system_failure(file, errno));
    if (!S_ISREG(status.st_mode)) {
        return failure(file,
                       S_ISDIR(status.st_mode) ? "is a folder, not an audio file" : "is no regular file");
    }
    if (status.st_size == 0)
        return failure(file, "is empty");
    return FileStamp{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                     status.st_mtim.tv_nsec};
}

Result<SoundFile> open_sound_file(const std::filesystem::path& file) {
    if (const auto stamp = stamp_of(file); !stamp)
        return tl::unexpected(stamp.error());
    // Non-blocking, in case a pipe has taken the file's place since.
    const int descriptor = open(file.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return tl::unexpected(system_failure(file, errno));
    const auto stream = std::make_shared<const SoundStream>(descriptor);
    if (stream->error_number() != 0)
        return tl::unexpected(system_failure(file, stream->error_number()));
    if (!stream->handle())
        return failure(file, std::string("is no audio file that can be read (") + sf_strerror(nullptr) + ")");
    const SF_INFO& info = stream->info();
    if (info.frames <= 0)
        return failure(file, "holds no audio");
    if (info.channels <= 0 || info.samplerate <= 0)
        return failure(file, "has no channels or no sample rate");
    return SoundFile{stream, info, file, claimed_frames(descriptor, info.frames)};
}

} // namespace headless::audio
