#include "headless/rpp/write_object.hpp"

#include "headless/rpp/edit_fields.hpp"
#include "headless/rpp/envelope_kinds.hpp"
#include "headless/rpp/folder_line.hpp"
#include "headless/rpp/media_source.hpp"
#include "headless/rpp/names.hpp"
#include "headless/rpp/write_points.hpp"

#include <algorithm>
#include <string>
#include <utility>

namespace headless::rpp {
namespace {

using chunk::Block;
using chunk::Lines;
using chunk::Node;
using chunk::ObjectKind;
using chunk::Text;

const Text end_line = Text::literal(">");

// Writes the lines in their order, with those to be inserted among them.
template <class WriteNode>
void write_lines(chunk::Output& out, const Lines& lines, const InsertedLines& inserted,
                 WriteNode write_node) {
    for (std::size_t i = 0; i <= lines.size(); ++i) {
        for (auto [line, end] = inserted.equal_range(i); line != end; ++line)
            out.line(line->second);
        if (i < lines.size())
            write_node(i, lines[i]);
    }
}

/// Writes a name where its line is. The block that may follow the line belongs to it.
class NameWriter {
public:
    NameWriter(chunk::Output& out, const std::string& name, const Lines& lines)
        : out_(out), name_(name), is_as_read_(read_name(lines) == name),
          is_missing_(!chunk::find_line(lines, "NAME") && !name.empty()) {}

    /// @returns whether the node was part of a name
    bool write(const Node& node) {
        if (node.token() != "NAME")
            return false;
        if (is_as_read_)
            out_.copy(node);
        else if (node.line())
            write_name(out_, *node.line(), name_);
        return true;
    }

    bool is_missing() const { return is_missing_; }

private:
    chunk::Output& out_;
    const std::string& name_;
    bool is_as_read_;
    bool is_missing_;
};

project::Envelope* find_envelope(const std::vector<std::unique_ptr<project::Envelope>>& envelopes,
                                 std::uint64_t serial) {
    const auto found = std::ranges::find(envelopes, serial, &project::Envelope::serial);
    return found == envelopes.end() ? nullptr : found->get();
}

std::string_view take_envelope_token(const project::Envelope& envelope) {
    const auto kind = std::ranges::find(take_envelope_kinds, envelope.name(), &EnvelopeKind::name);
    return kind == take_envelope_kinds.end() ? std::string_view{} : kind->token;
}

std::string_view track_envelope_token(const project::Envelope& envelope) {
    const auto kind = std::ranges::find(track_envelope_kinds, envelope.name(), &EnvelopeKind::name);
    return kind == track_envelope_kinds.end() ? std::string_view{} : kind->token;
}

bool stays_in_place(const project::Item& item) {
    const Text* line = item.block ? chunk::find_line(item.block->lines, "POSITION") : nullptr;
    return line && chunk::number_at(*line, 1, 0.0) == item.position_seconds();
}

const Lines& standard_take_lines(bool is_first) {
    static const Lines of_first = standard_lines(take_forms);
    static const Lines of_others = [] {
        Lines lines = standard_lines(take_forms);
        for (Node& node : lines)
            if (node.token() == "VOLPAN")
                node = Text::literal(default_line(take_forms, "TAKEVOLPAN"));
        return lines;
    }();
    return is_first ? of_first : of_others;
}

} // namespace

std::string envelope_token(const project::Envelope& envelope) {
    if (envelope.block)
        return std::string(chunk::token(envelope.block->head.content()));
    return std::string(take_envelope_token(envelope));
}

ObjectWriter::ObjectWriter(chunk::Output& out, project::Project& project, std::filesystem::path folder)
    : out_(out), project_(project), folder_(std::move(folder)) {}

bool ObjectWriter::is_moved() const { return project_.source && project_.source->folder != folder_; }

// A line with the object's identifier. An object that was read keeps the form that its line has.
Text ObjectWriter::id_line(chunk::Guid& id, bool is_new, const Text& present, std::size_t word) {
    if (is_new && !id)
        id = project_.guids.next();
    const auto in_file = chunk::guid_of(chunk::text_at(present, word));
    Text line = present;
    if (id && in_file != id)
        chunk::set_word(line, word, text_of(id));
    return line;
}

void ObjectWriter::write(project::Envelope& envelope, std::string_view token) {
    static const Lines standard = standard_lines(envelope_forms);
    const bool is_new = !envelope.block;
    const Lines& lines = is_new ? standard : envelope.block->lines;
    const std::span<const Field<project::EnvelopeProperties>> fields = envelope_fields();
    InsertedLines inserted;
    add_missing_lines(inserted, lines, tokens_of(lines), envelope.properties, fields, envelope_forms);
    PointWriter points(out_, envelope);
    out_.begin_block(is_new ? Text::made("<" + std::string(token)) : envelope.block->head);
    write_lines(out_, lines, inserted, [&](std::size_t, const Node& node) {
        if (!node.line()) {
            out_.copy(node);
        } else if (node.token() == "PT") {
            points.write_at(*node.line());
        } else if (node.token() == "EGUID") {
            out_.line(id_line(envelope.id, is_new, *node.line(), 1));
        } else {
            Text line = *node.line();
            edit_fields(line, envelope.properties, fields, envelope_forms);
            out_.line(line);
        }
    });
    points.write_rest();
    out_.end_block(is_new ? end_line : envelope.block->end);
}

void ObjectWriter::write_kept(const Node& node, const project::Track& track) {
    if (const chunk::Place* place = node.place()) {
        if (place->kind == ObjectKind::envelope)
            if (project::Envelope* envelope = find_envelope(track.envelopes(), place->serial))
                write(*envelope, "");
    } else if (const Block* block = node.block()) {
        out_.begin_block(block->head);
        const bool has_path = is_moved() && node.token() == "SOURCE";
        for (const Node& inner : block->lines)
            if (has_path && inner.line() && inner.token() == "FILE")
                out_.line(moved_line(*inner.line(), 1, project_.source->folder, folder_));
            else
                write_kept(inner, track);
        out_.end_block(block->end);
    } else {
        out_.line(*node.line());
    }
}

// The line of a take's volume in the form that its place among the takes asks for.
Text ObjectWriter::volume_line(const project::Take& take, bool is_first, const Text& present) const {
    Text line = present;
    const bool is_form_of_first = chunk::token(line.content()) == "VOLPAN";
    if (is_first != is_form_of_first) {
        const std::string law(chunk::text_at(line, is_form_of_first ? 4 : 3, "-1"));
        line = Text::made((is_first ? "VOLPAN 1 0 1 " : "TAKEVOLPAN 0 1 ") + law);
    }
    if (is_first)
        edit_fields(line, take.item(), item_fields(), take_forms);
    edit_fields(line, take, volume_fields(is_first), take_forms);
    return line;
}

void ObjectWriter::write_take_line(const Lines& lines, bool is_active) {
    Text line = Text::literal("TAKE");
    if (!lines.empty() && lines.front().line() && lines.front().token() == "TAKE")
        line = *lines.front().line();
    const bool is_empty = chunk::text_at(line, 1) == "NULL";
    const auto mark = chunk::word(line.content(), is_empty ? 2 : 1);
    const bool is_marked = mark && mark->text == "SEL";
    if (is_active && !is_marked)
        chunk::set_word(line, is_empty ? 2 : 1, "SEL");
    else if (is_marked && !is_active)
        line = Text::literal(is_empty ? "TAKE NULL" : "TAKE");
    out_.line(line);
}

void ObjectWriter::write_source_of(const project::Take& take, const Block* block) {
    if (block && plays_same(take.source, read_source(*block, folder_)))
        out_.copy(*block);
    else
        write_source(out_, block, take.source, folder_);
}

void ObjectWriter::write(project::Take& take, std::size_t index) {
    const bool is_first = index == 0;
    const bool is_new = take.lines.empty();
    const bool is_active = take.item().active_take() == &take;
    if (take.is_empty) {
        static const Lines empty{Text::literal("TAKE NULL")};
        if (!is_first)
            write_take_line(is_new ? empty : take.lines, is_active);
        return;
    }
    if (!is_first)
        write_take_line(take.lines, is_active);
    const Lines& lines = is_new ? standard_take_lines(is_first) : take.lines;
    InsertedLines inserted;
    add_missing_lines(inserted, lines, tokens_of(lines), take, take_fields(), take_forms);
    const bool has_volume =
        chunk::find_line(lines, "VOLPAN") || chunk::find_line(lines, "TAKEVOLPAN") ||
        (is_first && take.item().block && chunk::find_line(take.item().block->lines, "VOLPAN"));
    if (const auto token = is_first ? "VOLPAN" : "TAKEVOLPAN"; !has_volume) {
        const Text standard = Text::literal(default_line(take_forms, token));
        const Text line = volume_line(take, is_first, standard);
        if (line.content() != standard.content())
            inserted.emplace(place_for(lines, take_forms, token), line);
    }
    NameWriter name(out_, take.name, lines);
    if (name.is_missing())
        write_name(out_, Text::literal("NAME"), take.name);
    bool has_source = false;
    write_lines(out_, lines, inserted, [&](std::size_t place, const Node& node) {
        const std::string_view token = node.token();
        if (node.place()) {
            if (project::Envelope* envelope = find_envelope(take.envelopes(), node.place()->serial))
                write(*envelope, "");
        } else if (token == "SOURCE" && node.block() && !has_source) {
            has_source = true;
            write_source_of(take, node.block());
        } else if (name.write(node) || (place == 0 && token == "TAKE")) {
            return;
        } else if (!node.line()) {
            write_kept(node, take.item().track());
        } else if (token == "VOLPAN" || token == "TAKEVOLPAN") {
            out_.line(volume_line(take, is_first, *node.line()));
        } else if (token == "GUID") {
            out_.line(id_line(take.id, is_new, *node.line(), 1));
        } else {
            Text line = *node.line();
            edit_fields(line, take, take_fields(), take_forms);
            edit_fields(line, take.item(), item_fields(), item_forms);
            out_.line(line);
        }
    });
    if (!has_source && (is_new || !take.source.file.empty() || take.source.inner))
        write_source_of(take, nullptr);
    for (const auto& envelope : take.envelopes())
        if (!envelope->block)
            write(*envelope, take_envelope_token(*envelope));
}

void ObjectWriter::write(project::Item& item) {
    static const Lines standard = standard_lines(item_forms);
    const bool is_new = !item.block;
    const Lines& lines = is_new ? standard : item.block->lines;
    InsertedLines inserted;
    Tokens present = tokens_of(lines);
    for (const auto& take :
         item.takes()) // hand-made files may have lines of the item among those of its takes
        add_tokens(present, take->lines);
    if (!item.takes().empty())
        present.emplace_back("VOLPAN"); // is written with the first take
    add_missing_lines(inserted, lines, present, item, item_fields(), item_forms);
    out_.begin_block(is_new ? Text::literal("<ITEM") : item.block->head);
    write_lines(out_, lines, inserted, [&](std::size_t, const Node& node) {
        if (!node.line()) {
            write_kept(node, item.track());
        } else if (node.token() == "IGUID") {
            out_.line(id_line(item.id, is_new, *node.line(), 1));
        } else if (node.token() == "VOLPAN" && !item.takes().empty()) {
            out_.line(volume_line(*item.takes().front(), true, *node.line()));
        } else {
            Text line = *node.line();
            edit_fields(line, item, item_fields(), item_forms);
            out_.line(line);
        }
    });
    for (std::size_t i = 0; i < item.takes().size(); ++i)
        write(*item.takes()[i], i);
    out_.end_block(is_new ? end_line : item.block->end);
}

void ObjectWriter::write(project::Track& track, std::optional<int> depth_change) {
    static const Lines standard = standard_lines(track_forms);
    const bool is_new = !track.block;
    const Lines& lines = is_new ? standard : track.block->lines;
    const int depth = depth_change.value_or(track.folder_depth_change());
    InsertedLines inserted;
    add_missing_lines(inserted, lines, tokens_of(lines), track, track_fields(), track_forms);
    if (depth != 0 && !chunk::find_line(lines, "ISBUS"))
        inserted.emplace(place_for(lines, track_forms, "ISBUS"),
                         with_depth_change(Text::literal("ISBUS 0 0"), depth));
    std::vector<Child<project::Item>> items;
    for (const auto& item : track.items())
        items.push_back({item.get(), item->serial(), stays_in_place(*item)});
    const ChildOrder<project::Item> order(lines, ObjectKind::item, items,
                                          place_for(lines, track_forms, "ITEM"));
    const auto write_item = [this](project::Item* item) { write(*item); };
    const std::size_t envelopes = place_for(lines, track_forms, "VOLENV");
    const auto write_between = [&](std::size_t place) {
        if (place == envelopes) {
            for (const auto& envelope : track.envelopes())
                if (!envelope->block)
                    write(*envelope, track_envelope_token(*envelope));
        }
        order.before(place, write_item);
    };
    if (is_new && !track.id)
        track.id = project_.guids.next();
    NameWriter name(out_, track.name, lines);
    const bool has_head_id = !is_new && chunk::guid_of(chunk::text_at(track.block->head, 1));
    const bool has_line_id = !is_new && chunk::find_line(lines, "TRACKID");
    out_.begin_block(is_new                        ? Text::made("<TRACK " + text_of(track.id))
                     : has_head_id && !has_line_id ? id_line(track.id, false, track.block->head, 1)
                                                   : track.block->head);
    if (name.is_missing())
        write_name(out_, Text::literal("NAME"), track.name);
    write_lines(out_, lines, inserted, [&](std::size_t place, const Node& node) {
        write_between(place);
        if (node.place() && node.place()->kind == ObjectKind::item) {
            order.at(*node.place(), write_item);
        } else if (name.write(node)) {
            return;
        } else if (!node.line()) {
            write_kept(node, track);
        } else if (node.token() == "ISBUS") {
            out_.line(with_depth_change(*node.line(), depth));
        } else if (node.token() == "TRACKID") {
            out_.line(id_line(track.id, is_new, *node.line(), 1));
        } else {
            Text line = *node.line();
            edit_fields(line, track, track_fields(), track_forms);
            out_.line(line);
        }
    });
    write_between(lines.size());
    out_.end_block(is_new ? end_line : track.block->end);
}

} // namespace headless::rpp
