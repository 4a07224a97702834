#include "headless/audio/sound_file.hpp"

#include "headless/audio/header_claim.hpp"
#include "headless/base/atomic_file.hpp"

#include <cerrno>

namespace headless::audio {
namespace {

tl::unexpected<Failure> failure(const std::filesystem::path& file, const std::string& reason) {
    return tl::unexpected(path_failure(file, reason));
}

} // namespace

Result<FileStamp> stamp_of(const std::filesystem::path& file) {
    const auto status = system::status_of(file);
    if (!status)
        return tl::unexpected(system_failure(file, errno));
    if (status->type == system::FileType::folder)
        return failure(file, "is a folder, not an audio file");
    if (status->type != system::FileType::regular)
        return failure(file, "is no regular file");
    if (status->bytes == 0)
        return failure(file, "is empty");
    return FileStamp{status->identity, status->bytes, status->changed_seconds, status->changed_nanoseconds};
}

Result<SoundFile> open_sound_file(const std::filesystem::path& file) {
    if (const auto stamp = stamp_of(file); !stamp)
        return tl::unexpected(stamp.error());
    // Non-blocking, in case a pipe has taken the file's place since.
    const int descriptor = system::open_to_read(file);
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
