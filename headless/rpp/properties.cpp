#include "headless/rpp/properties.hpp"

#include "headless/rpp/forms.hpp"

#include <utility>

namespace headless::rpp {
namespace {

using chunk::Lines;
using chunk::Text;

const Lines no_lines;

// The lines and the forms of each kind of object.
bool is_master(const project::Track& track) { return &track == &track.project().master(); }

const Lines& lines_of(const project::Project& project) {
    return project.source ? project.source->document.root.lines : no_lines;
}
const Lines& lines_of(const project::Track& track) {
    if (is_master(track))
        return lines_of(track.project());
    return track.block ? track.block->lines : no_lines;
}
const Lines& lines_of(const project::Item& item) { return item.block ? item.block->lines : no_lines; }
const Lines& lines_of(const project::Take& take) { return take.lines; }
const Lines& lines_of(const project::Envelope& envelope) {
    return envelope.block ? envelope.block->lines : no_lines;
}

Lines& lines_to_edit(project::Project& project) {
    give_lines(project);
    return project.source->document.root.lines;
}
Lines& lines_to_edit(project::Track& track) {
    if (is_master(track))
        return lines_to_edit(track.project());
    give_lines(track);
    return track.block->lines;
}
Lines& lines_to_edit(project::Item& item) {
    give_lines(item);
    return item.block->lines;
}
Lines& lines_to_edit(project::Take& take) {
    give_lines(take);
    return take.lines;
}
Lines& lines_to_edit(project::Envelope& envelope) { return envelope.block->lines; }

Forms forms_of(const project::Track& track) { return is_master(track) ? project_forms : track_forms; }
Forms forms_of(const project::Item&) { return item_forms; }
Forms forms_of(const project::Take&) { return take_forms; }
Forms forms_of(const project::Envelope&) { return envelope_forms; }
Forms forms_of(const project::Project&) { return project_forms; }

template <class T>
std::string read(const T& object, FieldPlace place) {
    const Text* line = chunk::find_line(lines_of(object), place.token);
    const auto found = line ? chunk::word(line->content(), place.word) : std::nullopt;
    const auto by_default = chunk::word(default_line(forms_of(object), place.token), place.word);
    return std::string(found ? found->text : by_default ? by_default->text : std::string_view{});
}

template <class T>
double read_number(const T& object, FieldPlace place) {
    return chunk::number(read(object, place)).value_or(0.0);
}

template <class T>
void insert_node(T& object, chunk::Node node) {
    Lines& lines = lines_to_edit(object);
    const std::size_t place = place_for(lines, forms_of(object), node.token());
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(place), std::move(node));
}

template <class T>
void write(T& object, FieldPlace place, std::string_view word) {
    Lines& lines = lines_to_edit(object);
    const std::string_view form = default_line(forms_of(object), place.token);
    if (!chunk::find_line(lines, place.token))
        insert_node(object, Text::made(form.empty() ? place.token : form));
    chunk::set_word(*chunk::find_line(lines, place.token), place.word, word, form);
}

template <class T>
void write_number(T& object, FieldPlace place, double value) {
    if (read_number(object, place) != value)
        write(object, place, chunk::decimal(value));
}

template <class T>
void write_text(T& object, FieldPlace place, const std::string& value) {
    if (read(object, place) != value)
        write(object, place, chunk::as_word(value));
}

void set_id(Lines& lines, std::string_view token, const chunk::Guid& id) {
    if (Text* line = chunk::find_line(lines, token))
        chunk::set_word(*line, 1, text_of(id));
}

void give_id(chunk::Guid& id, project::Project& project) {
    if (!id)
        id = project.guids.next();
}

} // namespace

void give_lines(project::Track& track) {
    if (track.block || is_master(track))
        return;
    give_id(track.id, track.project());
    track.block = std::make_unique<chunk::Block>(
        chunk::Block{Text::made("<TRACK " + text_of(track.id)), standard_lines(track_forms)});
    set_id(track.block->lines, "TRACKID", track.id);
}

void give_lines(project::Item& item) {
    if (item.block)
        return;
    give_id(item.id, item.track().project());
    item.block =
        std::make_unique<chunk::Block>(chunk::Block{Text::literal("<ITEM"), standard_lines(item_forms)});
    set_id(item.block->lines, "IGUID", item.id);
}

void give_lines(project::Take& take) {
    if (!take.lines.empty())
        return;
    give_id(take.id, take.item().track().project());
    take.lines = standard_lines(take_forms);
    set_id(take.lines, "GUID", take.id);
    if (take.source.type == project::Source::empty_type)
        take.lines.emplace_back(chunk::Block{Text::literal("<SOURCE EMPTY"), {}});
}

void give_lines(project::Envelope& envelope, project::Project& project, std::string_view token) {
    if (envelope.block)
        return;
    give_id(envelope.id, project);
    envelope.block = std::make_unique<chunk::Block>(
        chunk::Block{Text::made("<" + std::string(token)), standard_lines(envelope_forms)});
    set_id(envelope.block->lines, "EGUID", envelope.id);
}

void give_lines(project::Project& project) {
    if (project.source)
        return;
    project.source = std::make_unique<project::ProjectSource>();
    project.source->folder = project.file.parent_path();
    chunk::Block& root = project.source->document.root;
    root.head = Text::literal(own_head);
    root.lines = standard_lines(project_forms);
}

double number_of(const project::Track& track, FieldPlace place) { return read_number(track, place); }
double number_of(const project::Item& item, FieldPlace place) { return read_number(item, place); }
double number_of(const project::Take& take, FieldPlace place) { return read_number(take, place); }
double number_of(const project::Envelope& envelope, FieldPlace place) { return read_number(envelope, place); }
double number_of(const project::Project& project, FieldPlace place) { return read_number(project, place); }

std::string text_of(const project::Track& track, FieldPlace place) { return read(track, place); }
std::string text_of(const project::Item& item, FieldPlace place) { return read(item, place); }
std::string text_of(const project::Take& take, FieldPlace place) { return read(take, place); }
std::string text_of(const project::Project& project, FieldPlace place) { return read(project, place); }

void set_number(project::Track& track, FieldPlace place, double value) { write_number(track, place, value); }
void set_number(project::Item& item, FieldPlace place, double value) { write_number(item, place, value); }
void set_number(project::Take& take, FieldPlace place, double value) { write_number(take, place, value); }
void set_number(project::Envelope& envelope, FieldPlace place, double value) {
    write_number(envelope, place, value);
}
void set_number(project::Project& project, FieldPlace place, double value) {
    write_number(project, place, value);
}

void set_text(project::Track& track, FieldPlace place, const std::string& value) {
    write_text(track, place, value);
}
void set_text(project::Item& item, FieldPlace place, const std::string& value) {
    write_text(item, place, value);
}
void set_text(project::Take& take, FieldPlace place, const std::string& value) {
    write_text(take, place, value);
}
void set_text(project::Project& project, FieldPlace place, const std::string& value) {
    write_text(project, place, value);
}

void insert(project::Track& track, chunk::Node node) { insert_node(track, std::move(node)); }
void insert(project::Item& item, chunk::Node node) { insert_node(item, std::move(node)); }
void insert(project::Take& take, chunk::Node node) { insert_node(take, std::move(node)); }
void insert(project::Project& project, chunk::Node node) { insert_node(project, std::move(node)); }

} // namespace headless::rpp
