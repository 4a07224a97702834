#pragma once
// Other programs.

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace headless::system {

/// The number of this process.
std::int64_t process_number();

/// A program that was started. It reads nothing: its standard input is empty.
class ChildProcess {
public:
    enum class Output { shared, piped }; ///< where this process writes; to read_output()
    enum class Reading { bytes, nothing_yet, end, failed };

    /// @param words  the program, looked up in PATH, and its arguments
    /// @returns nothing if it cannot be started
    static std::optional<ChildProcess> start(const std::vector<std::string>& words, Output output);

    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess& operator=(ChildProcess&&) = delete;
    ~ChildProcess();

    /// Waits no longer than `patience` for output, and appends what there is.
    Reading read_output(std::string& output, std::chrono::milliseconds patience);

    /// Reads no more: a program that still writes notices.
    void close_output();

    void kill();

    /// @returns the exit status, or 128 and the number of the signal that ended it
    int wait();

private:
    ChildProcess(std::intptr_t process, std::intptr_t output) : process_(process), output_(output) {}

    std::intptr_t process_; ///< its number, or the handle to it
    std::intptr_t output_;  ///< descriptor or handle; -1: none
};

} // namespace headless::system
