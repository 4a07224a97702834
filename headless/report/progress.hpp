#pragma once
// A progress line that is rewritten in place on a terminal.

#include <chrono>
#include <cstddef>
#include <string>
#include <string_view>

namespace headless::report {

/// "1:05 left", "2:00:10 left": the remaining time if every piece takes as long as those that are done. Empty
/// if none is done.
std::string time_left_text(double elapsed_seconds, std::size_t done, std::size_t total);

/// Writes nothing if the stream is not a terminal. The destructor erases the line.
class Progress {
public:
    /// @param stream_descriptor  the stream to write to, normally that of stderr; stays open
    explicit Progress(int stream_descriptor);
    ~Progress() { erase(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// "3/40  1:05 left  name", truncated to the terminal's width. `number` counts from 1; the time counts
    /// from the first call.
    void show(std::size_t number, std::size_t total, std::string_view name);

    /// Erases the progress line. To be called before other output.
    void erase();

private:
    void write(std::string_view text) const;

    int descriptor_;
    bool on_terminal_;
    bool shown_ = false;
    std::size_t first_number_ = 0; ///< 0: nothing shown yet
    std::chrono::steady_clock::time_point begin_;
};

} // namespace headless::report
