#pragma once
// Disk space that is reserved until it is needed.

#include "headless/system/files.hpp"

#include <cstdint>
#include <filesystem>

namespace headless::jobs {

/// A project is saved after its renders. So that the renders cannot fill the disk, the space for the project
/// is reserved as long as this object exists. Nothing is left behind however the program ends.
class DiskReservation {
public:
    /// Reserves `bytes` in that folder if they are available and the file system supports it; otherwise
    /// reserves nothing.
    DiskReservation(const std::filesystem::path& folder, std::uintmax_t bytes)
        : reserve_(system::reserve_space(folder, bytes)) {}

    void release() { reserve_.close(); }

private:
    system::Descriptor reserve_;
};

} // namespace headless::jobs
