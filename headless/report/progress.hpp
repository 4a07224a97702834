#pragma once
// How far the work has come, as one line that is rewritten in place on a terminal.

#include <cstddef>
#include <string_view>

namespace headless {

/// Writes nothing where the stream is no terminal. The line is gone when the object is.
class Progress {
public:
    /// @param stream_descriptor  the stream to write to, normally that of stderr; stays open
    explicit Progress(int stream_descriptor);
    ~Progress() { erase(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// "3/40  name", cut to the terminal's width. `number` counts from 1.
    void show(std::size_t number, std::size_t total, std::string_view name);

    /// Leaves the terminal's line as if nothing had been written; to be called before other output.
    void erase();

private:
    void write(std::string_view text) const;

    int descriptor_;
    bool on_terminal_;
    bool shown_ = false;
};

} // namespace headless
