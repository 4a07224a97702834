#pragma once
// Reads tracks, items and envelopes from their blocks. The blocks stay with the objects.

#include "headless/base/failure.hpp"
#include "headless/chunk/lines.hpp"
#include "headless/project/project.hpp"

#include <filesystem>
#include <string_view>

namespace headless::rpp {

/// What is read, and from where. The first failure is kept; reading goes on after it.
class Reading {
public:
    /// @param text the file's text, to find the number of a line; empty for the texts of scripts
    Reading(project::Project& project, std::filesystem::path folder, std::string_view text)
        : project_(project), folder_(std::move(folder)), text_(text) {}

    project::Project& project() { return project_; }
    const std::filesystem::path& folder() const { return folder_; }

    void fail(const chunk::Text& line, std::string_view reason);
    const std::optional<Failure>& failure() const { return failure_; }

private:
    project::Project& project_;
    std::filesystem::path folder_;
    std::string_view text_;
    std::optional<Failure> failure_;
};

/// Fills a new track.
void read_track(Reading& in, project::Track& track, chunk::Block block);

/// Fills a new item.
void read_item(Reading& in, project::Item& item, chunk::Block block);

/// Fills a new envelope.
void read_envelope(Reading& in, project::Envelope& envelope, chunk::Block block);

/// Adds the track's envelopes among the lines, also those of its effects, and leaves places for them.
void read_envelopes(Reading& in, project::Track& track, chunk::Lines& lines);

} // namespace headless::rpp
