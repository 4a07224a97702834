#pragma once
// Where Linux and macOS differ. Declared here, defined once for each.

#include <array>
#include <ctime>
#include <filesystem>
#include <sys/stat.h>

namespace headless::system::posix {

/// As rename(), but fails with EEXIST if the new name is taken, with EINVAL or ENOSYS if the file system
/// cannot do that.
int rename_exclusively(const char* file, const char* new_name);

/// As fsync(), as far as to the disk.
int sync_to_disk(int descriptor);

/// As pipe(); programs that are started do not inherit the ends.
int make_pipe(std::array<int, 2>& ends);

timespec time_of_change(const struct stat& status);

char** environment();

} // namespace headless::system::posix
