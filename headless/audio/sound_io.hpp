#pragma once
// The reads and writes that libsndfile makes. libsndfile ignores some of their failures and then takes a file
// to be shorter than it is, or to be complete; here the first failure is recorded. For use inside this
// folder.

#include <sndfile.h>

#include <cstdint>

namespace headless::audio {

/// Serves one SNDFILE over a descriptor that it does not own. Must not be moved while the SNDFILE is open.
class SoundIo {
public:
    explicit SoundIo(int descriptor) : descriptor_(descriptor) {}
    SoundIo(const SoundIo&) = delete;
    SoundIo& operator=(const SoundIo&) = delete;

    /// Opens the file from its start. Returns null if sf_open does.
    SNDFILE* open(int mode, SF_INFO& info);

    /// The errno of the first read, write or size query that failed; 0 if none did.
    int error_number() const { return error_number_; }

private:
    static SF_VIRTUAL_IO functions();
    sf_count_t size();
    sf_count_t seek(sf_count_t offset, int whence);
    template <class Transfer, class Byte>
    sf_count_t transfer(Transfer call, Byte* bytes, sf_count_t count);

    int descriptor_;
    sf_count_t position_ = 0;
    int error_number_ = 0;
};

} // namespace headless::audio
