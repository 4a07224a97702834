#pragma once
// Writes tracks, items and envelopes: the lines they were read from, with the fields that have changed since,
// or the lines that the workstation gives new ones.

#include "headless/chunk/output.hpp"
#include "headless/project/project.hpp"
#include "headless/rpp/child_order.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace headless::rpp {

/// The token of the envelope's block: that of its lines, or the one that its name stands for.
std::string envelope_token(const project::Envelope& envelope);

class ObjectWriter {
public:
    /// @param project  gives identifiers to objects that have none
    /// @param folder   that of the file to be written; paths below it are relative
    ObjectWriter(chunk::Output& out, project::Project& project, std::filesystem::path folder);

    /// @param depth_change  what to write instead of the track's own
    void write(project::Track& track, std::optional<int> depth_change = std::nullopt);
    void write(project::Item& item);
    /// @param token  of a new envelope's block
    void write(project::Envelope& envelope, std::string_view token);

    /// Writes a block of which the model holds only the envelopes in it.
    void write_kept(const chunk::Node& node, const project::Track& track);

private:
    void write(project::Take& take, std::size_t index);
    void write_take_line(const chunk::Lines& lines, bool is_active);
    void write_source_of(const project::Take& take, const chunk::Block* block);
    chunk::Text volume_line(const project::Take& take, bool is_first, const chunk::Text& present) const;
    chunk::Text id_line(chunk::Guid& id, bool is_new, const chunk::Text& present, std::size_t word);
    bool is_moved() const;

    chunk::Output& out_;
    project::Project& project_;
    std::filesystem::path folder_;
};

} // namespace headless::rpp
