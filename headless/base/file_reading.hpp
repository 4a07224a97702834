#pragma once
// Reading files by the system's own calls, so that a read that fails is not taken for the end of the file.

#include "headless/base/failure.hpp"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <sys/types.h>
#include <unistd.h>

namespace headless {

/// Owns a file descriptor; below 0 there is none.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0)
            close(number_);
    }
    operator int() const { return number_; }

private:
    int number_;
};

/// The bytes of an open file from `position` on, at most so many; fewer only at its end.
/// @param file  its name for a failure
Result<std::string> read_at(int descriptor, const std::filesystem::path& file, off_t position,
                            std::size_t most);

/// The first bytes of a file, at most so many. None where no regular file lies: pipes and devices are not
/// opened, as they might never answer. Fails, naming the file, when it cannot be read.
Result<std::optional<std::string>> beginning_of(const std::filesystem::path& file, std::size_t most);

/// The same of the whole file.
Result<std::optional<std::string>> text_of(const std::filesystem::path& file);

} // namespace headless
