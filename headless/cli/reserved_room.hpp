#pragma once
// Room on the disk that is kept until it is needed.

#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace headless {

/// A project is saved after its renders. Lest those fill the disk, its own room is kept from them as long as
/// the object lives. The file that holds it has no name, so that nothing stays behind however the program
/// ends.
class ReservedRoom {
public:
    /// Takes `bytes` in that folder if they are to be had and the file system can; else nothing.
    ReservedRoom(const std::filesystem::path& folder, std::uintmax_t bytes)
        : descriptor_(open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600)) {
        if (descriptor_ >= 0 && fallocate(descriptor_, 0, 0, static_cast<off_t>(bytes)) != 0)
            release();
    }
    ~ReservedRoom() { release(); }
    ReservedRoom(const ReservedRoom&) = delete;
    ReservedRoom& operator=(const ReservedRoom&) = delete;

    void release() {
        if (descriptor_ >= 0)
            close(descriptor_);
        descriptor_ = -1;
    }

private:
    int descriptor_;
};

} // namespace headless
