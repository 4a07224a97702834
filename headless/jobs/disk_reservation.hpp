#pragma once
// Disk space that is reserved until it is needed.

#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace headless::jobs {

/// A project is saved after its renders. So that the renders cannot fill the disk, the space for the project
/// is reserved as long as this object exists. The file that reserves it has no name, so nothing is left
/// behind however the program ends.
class DiskReservation {
public:
    /// Reserves `bytes` in that folder if they are available and the file system supports it; otherwise
    /// reserves nothing.
    DiskReservation(const std::filesystem::path& folder, std::uintmax_t bytes)
        : descriptor_(open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600)) {
        if (descriptor_ >= 0 && fallocate(descriptor_, 0, 0, static_cast<off_t>(bytes)) != 0)
            release();
    }
    ~DiskReservation() { release(); }
    DiskReservation(const DiskReservation&) = delete;
    DiskReservation& operator=(const DiskReservation&) = delete;

    void release() {
        if (descriptor_ >= 0)
            close(descriptor_);
        descriptor_ = -1;
    }

private:
    int descriptor_;
};

} // namespace headless::jobs
