#include "headless/rpp/state.hpp"

#include "headless/chunk/parse.hpp"
#include "headless/rpp/fields.hpp"
#include "headless/rpp/read_object.hpp"
#include "headless/rpp/rpp.hpp"
#include "headless/rpp/write_object.hpp"

#include <array>
#include <utility>

namespace headless::rpp {
namespace {

std::filesystem::path folder_of(const project::Project& project) {
    return project.source ? project.source->folder : project.file.parent_path();
}

template <class Write>
std::string written(project::Project& project, Write write) {
    std::string text;
    chunk::Output out({.is_file = false}, [&](std::string_view piece) { text += piece; });
    ObjectWriter writer(out, project, folder_of(project));
    write(writer);
    out.flush();
    return text;
}

Result<chunk::Block> block_of(std::string_view text, std::string_view token) {
    return chunk::parse_block(text).and_then([&](chunk::Block&& block) -> Result<chunk::Block> {
        if (chunk::token(block.head.content()) != token)
            return tl::unexpected(Failure{"the text is no block '" + std::string(token) + "'"});
        return std::move(block);
    });
}

template <class T>
void reset(T& object, std::span<const Field<T>> fields) {
    for (const Field<T>& field : fields)
        field.set(object, field.otherwise);
}

// Reads into a scratch project first, so that a text at fault changes nothing.
template <class Read>
Result<void> check(const project::Project& project, const chunk::Block& block, Read read) {
    project::Project scratch;
    Reading in(scratch, folder_of(project), "");
    read(in, scratch.insert_track(0), block);
    return in.failure() ? Result<void>(tl::unexpected(*in.failure())) : Result<void>();
}

/// A line of the master among the project's, and its form in a track's block.
struct MasterLine {
    std::string_view token;
    std::string_view token_of_track;
};

constexpr std::array master_lines{
    MasterLine{"MASTERPEAKCOL", "PEAKCOL"},   MasterLine{"MASTERAUTOMODE", "AUTOMODE"},
    MasterLine{"MASTER_PANMODE", "PANMODE"},  MasterLine{"MASTER_VOLUME", "VOLPAN"},
    MasterLine{"MASTER_SEL", "SEL"},          MasterLine{"MASTERTRACKHEIGHT", "TRACKHEIGHT"},
    MasterLine{"MASTER_NCH", "NCHAN"},        MasterLine{"MASTER_FX", "FX"},
    MasterLine{"MASTERHWOUT", "HWOUT"},       MasterLine{"MASTERVOLENV", "VOLENV"},
    MasterLine{"MASTERVOLENV2", "VOLENV2"},   MasterLine{"MASTERVOLENV3", "VOLENV3"},
    MasterLine{"MASTERPANENV", "PANENV"},     MasterLine{"MASTERPANENV2", "PANENV2"},
    MasterLine{"MASTERWIDTHENV", "WIDTHENV"}, MasterLine{"MASTERWIDTHENV2", "WIDTHENV2"},
    MasterLine{"MASTERFXLIST", "FXCHAIN"}};

// A track's block with what the project's lines hold of the master.
std::string state_of_master(project::Track& master) {
    project::Project& project = master.project();
    const std::string file = project_text(project, folder_of(project));
    const auto document = chunk::parse_file(file);
    const chunk::Lines none;
    const chunk::Lines& lines = document ? document->root.lines : none;
    chunk::Block state{chunk::Text::made("<TRACK"), {}};
    const std::string mute_and_solo =
        "MUTESOLO " + std::to_string(master.mute ? 1 : 0) + " " + std::to_string(master.solo) + " 0";
    state.lines.emplace_back(chunk::Text::made(mute_and_solo));
    for (const MasterLine& known : master_lines) {
        for (chunk::Node node : lines) {
            chunk::Text* head = node.line() ? node.line() : node.block() ? &node.block()->head : nullptr;
            if (!head || node.token() != known.token)
                continue;
            const std::size_t mark = node.block() ? 1 : 0; // "<"
            head->replace(mark, known.token.size(), known.token_of_track);
            state.lines.push_back(std::move(node));
        }
    }
    std::string text;
    chunk::Output out({.is_file = false}, [&](std::string_view piece) { text += piece; });
    out.copy(state);
    out.flush();
    return text;
}

bool is_master(const project::Track& track) { return &track == &track.project().master(); }

} // namespace

std::string state_of(project::Track& track) {
    if (is_master(track))
        return state_of_master(track);
    return written(track.project(), [&](ObjectWriter& writer) { writer.write(track); });
}

std::string state_of(project::Item& item) {
    return written(item.track().project(), [&](ObjectWriter& writer) { writer.write(item); });
}

std::string state_of(project::Envelope& envelope, project::Project& project) {
    return written(project, [&](ObjectWriter& writer) { writer.write(envelope, envelope_token(envelope)); });
}

Result<void> set_state(project::Track& track, std::string_view text) {
    if (is_master(track))
        return tl::unexpected(Failure{"the master's state cannot be replaced"});
    auto block = block_of(text, "TRACK");
    if (!block)
        return tl::unexpected(block.error());
    const auto valid =
        check(track.project(), *block,
              [](Reading& in, project::Track& scratch, const auto& read) { read_track(in, scratch, read); });
    return valid.map([&] {
        track.clear();
        reset(track, track_fields());
        if (!chunk::find_line(block->lines, "ISBUS"))
            track.set_folder_depth_change(0);
        track.id = {};
        Reading in(track.project(), folder_of(track.project()), "");
        read_track(in, track, std::move(*block));
    });
}

Result<void> set_state(project::Item& item, std::string_view text) {
    auto block = block_of(text, "ITEM");
    if (!block)
        return tl::unexpected(block.error());
    project::Project& project = item.track().project();
    const auto valid = check(project, *block, [](Reading& in, project::Track& scratch, const auto& read) {
        read_item(in, scratch.add_item(0.0, 0.0), read);
    });
    return valid.map([&] {
        item.clear();
        reset(item, item_fields());
        item.id = {};
        Reading in(project, folder_of(project), "");
        read_item(in, item, std::move(*block));
    });
}

Result<void> set_state(project::Envelope& envelope, project::Project& project, std::string_view text) {
    auto block = block_of(text, envelope_token(envelope));
    if (!block)
        return tl::unexpected(block.error());
    project::Envelope scratch(envelope.name());
    Reading in(project, folder_of(project), "");
    read_envelope(in, scratch, std::move(*block));
    if (in.failure())
        return tl::unexpected(*in.failure());
    envelope.properties = scratch.properties;
    envelope.id = scratch.id;
    envelope.block = std::move(scratch.block);
    envelope.read_points(std::move(scratch).take_points());
    return {};
}

} // namespace headless::rpp
