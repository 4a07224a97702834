#pragma once
// Writes the points of an envelope. A point that was read and is still there keeps its line.

#include "headless/chunk/output.hpp"
#include "headless/project/envelope.hpp"

#include <cstddef>

namespace headless::rpp {

class PointWriter {
public:
    PointWriter(chunk::Output& out, const project::Envelope& envelope) : out_(out), envelope_(envelope) {}

    /// Writes what comes in place of that line.
    void write_at(const chunk::Text& line);

    /// Writes the points after the last line.
    void write_rest();

private:
    bool is_as_read() const { return envelope_.block && !envelope_.has_new_points(); }
    void write_new(const project::EnvelopePoint& point);

    chunk::Output& out_;
    const project::Envelope& envelope_;
    std::size_t next_ = 0;
};

} // namespace headless::rpp
