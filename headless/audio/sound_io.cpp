#include "headless/audio/sound_io.hpp"

#include "headless/system/files.hpp"

#include <cerrno>

namespace headless::audio {

SNDFILE* SoundIo::open(int mode, SF_INFO& info) {
    SF_VIRTUAL_IO io = functions();
    return sf_open_virtual(&io, mode, &info, this);
}

SF_VIRTUAL_IO SoundIo::functions() {
    return {[](void* self) { return static_cast<SoundIo*>(self)->size(); },
            [](sf_count_t offset, int whence, void* self) {
                return static_cast<SoundIo*>(self)->seek(offset, whence);
            },
            [](void* bytes, sf_count_t count, void* self) {
                return static_cast<SoundIo*>(self)->transfer(system::read_at, static_cast<char*>(bytes),
                                                             count);
            },
            [](const void* bytes, sf_count_t count, void* self) {
                return static_cast<SoundIo*>(self)->transfer(system::write_at,
                                                             static_cast<const char*>(bytes), count);
            },
            [](void* self) { return static_cast<SoundIo*>(self)->position_; }};
}

sf_count_t SoundIo::size() {
    if (const auto status = system::status_of(descriptor_))
        return status->bytes;
    error_number_ = error_number_ ? error_number_ : errno;
    return -1;
}

sf_count_t SoundIo::seek(sf_count_t offset, int whence) {
    const sf_count_t origin = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? position_ : size();
    constexpr sf_count_t farthest = sf_count_t{1} << 62; // beyond any file's end; sums with it fit
    if (origin < 0 || offset < -origin || offset > farthest - origin)
        return -1;
    return position_ = origin + offset;
}

template <class Transfer, class Byte>
sf_count_t SoundIo::transfer(Transfer call, Byte* bytes, sf_count_t count) {
    sf_count_t done = 0;
    while (done < count) {
        const std::int64_t moved =
            call(descriptor_, bytes + done, static_cast<std::size_t>(count - done), position_);
        if (moved < 0 && errno == EINTR)
            continue;
        if (moved < 0)
            error_number_ = error_number_ ? error_number_ : errno;
        if (moved <= 0)
            break;
        done += moved;
        position_ += moved;
    }
    return done;
}

} // namespace headless::audio
