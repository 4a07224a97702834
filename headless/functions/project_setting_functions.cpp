// The project's settings by key: numbers and texts.

#include "common/path_text.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/c_values.hpp"
#include "headless/functions/tables.hpp"
#include "headless/rpp/properties.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace headless::functions {
namespace {

using project::Project;

constexpr Attribute<Project> rows[] = {
    {"PROJECT_SRATE", [](const Project& project) { return static_cast<double>(project.sample_rate); },
     [](Project& project, double value) { project.sample_rate = std::max(to_int(value), 1); }},
    {"PROJECT_SRATE_USE", flag_at("SAMPLERATE", 2)},
    {"RENDER_SETTINGS", whole_number_at("RENDER_STEMS", 1, 0)},
    {"RENDER_BOUNDSFLAG", whole_number_at("RENDER_RANGE", 1, 0)},
    {"RENDER_STARTPOS", number_at("RENDER_RANGE", 2)},
    {"RENDER_ENDPOS", number_at("RENDER_RANGE", 3)},
    {"RENDER_TAILFLAG", whole_number_at("RENDER_RANGE", 4, 0)},
    {"RENDER_TAILMS", whole_number_at("RENDER_RANGE", 5, 0)},
    {"RENDER_CHANNELS", whole_number_at("RENDER_FMT", 2, 1)},
    {"RENDER_SRATE", whole_number_at("RENDER_FMT", 3, 0)},
    {"RENDER_ADDTOPROJ", whole_number_at("RENDER_ADDTOPROJ", 1, 0)},
    {"RENDER_DITHER", whole_number_at("RENDER_DITHER", 1, 0)},
    {"RENDER_NORMALIZE", whole_number_at("RENDER_NORMALIZE", 1, 0)},
    {"RENDER_NORMALIZE_TARGET", number_at("RENDER_NORMALIZE", 2, 0)},
    {"RENDER_BRICKWALL", number_at("RENDER_NORMALIZE", 3, 0)},
    {"RENDER_FADEIN", number_at("RENDER_NORMALIZE", 4, 0)},
    {"RENDER_FADEOUT", number_at("RENDER_NORMALIZE", 5, 0)},
    {"RENDER_FADEINSHAPE", whole_number_at("RENDER_NORMALIZE", 6, 0)},
    {"RENDER_FADEOUTSHAPE", whole_number_at("RENDER_NORMALIZE", 7, 0)},
};

constexpr Attributes<Project> attributes{"GetSetProjectInfo", "GetSetProjectInfo", rows};

// Returns the value that there is afterwards.
double get_set_number(Workstation& workstation, Project& project, const char* key, double value,
                      bool is_set) {
    if (is_set)
        set_value<attributes>(workstation, project, key, value);
    return get_value<attributes>(workstation, project, key);
}

bool put_text(std::string_view text, char* buffer) {
    workstation::copy_text(text, buffer, workstation::unsized_buffer_bytes);
    return true;
}

struct TextPlace {
    std::string_view key;
    rpp::FieldPlace place;
};

constexpr std::array text_places{
    TextPlace{"PROJECT_TITLE", {"TITLE", 1}}, TextPlace{"PROJECT_AUTHOR", {"AUTHOR", 1}},
    TextPlace{"RECORD_PATH_SECONDARY", {"RECORD_PATH", 2}}, TextPlace{"RENDER_FILE", {"RENDER_FILE", 1}},
    TextPlace{"RENDER_PATTERN", {"RENDER_PATTERN", 1}}};

struct FormatBlock {
    std::string_view key;
    std::string_view token;
};

// Settings of audio formats, in base64.
constexpr std::array format_blocks{
    FormatBlock{"RECORD_FORMAT", "RECORD_CFG"}, FormatBlock{"APPLYFX_FORMAT", "APPLYFX_CFG"},
    FormatBlock{"RENDER_FORMAT", "RENDER_CFG"}, FormatBlock{"RENDER_FORMAT2", "RENDER_CFG2"}};

const chunk::Block* find_block(const Project& project, std::string_view token) {
    return project.source ? chunk::find_block(project.source->document.root.lines, token) : nullptr;
}

chunk::Block& block_to_edit(Project& project, std::string_view token) {
    rpp::give_lines(project);
    if (!find_block(project, token))
        rpp::insert(project, chunk::Block{chunk::Text::made("<" + std::string(token)), {}});
    return *chunk::find_block(project.source->document.root.lines, token);
}

// The four letters that name a format stand for its default settings.
std::string in_base64(std::string_view letters) {
    constexpr std::string_view digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr unsigned six_bits = 0x3F;
    std::string text;
    for (std::size_t begin = 0; begin < letters.size(); begin += 3) {
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i)
            group = group << 8 |
                    (begin + i < letters.size() ? static_cast<unsigned char>(letters[begin + i]) : 0U);
        for (std::size_t i = 0; i < 4; ++i)
            text += begin + i <= letters.size() ? digits[group >> (18 - 6 * i) & six_bits] : '=';
    }
    return text;
}

constexpr std::size_t format_letters = 4;
constexpr std::size_t base64_line_bytes = 128;

std::string format_text(const Project& project, std::string_view token) {
    std::string text;
    if (const chunk::Block* block = find_block(project, token))
        for (const chunk::Node& node : block->lines)
            if (node.line())
                text += node.line()->content();
    return text;
}

void set_format(Project& project, std::string_view token, std::string_view text) {
    const std::string wanted = text.size() == format_letters ? in_base64(text) : chunk::on_one_line(text);
    if (format_text(project, token) == wanted)
        return;
    chunk::Lines& lines = block_to_edit(project, token).lines;
    lines.clear();
    for (std::size_t begin = 0; begin < wanted.size(); begin += base64_line_bytes)
        lines.emplace_back(chunk::Text::made(std::string_view(wanted).substr(begin, base64_line_bytes)));
}

constexpr std::string_view metadata_token = "RENDER_METADATA";
constexpr std::string_view tag_token = "TAG";

// The line of that tag, null if there is none.
const chunk::Text* find_tag(const Project& project, std::string_view id) {
    const chunk::Block* block = find_block(project, metadata_token);
    if (!block)
        return nullptr;
    for (const chunk::Node& node : block->lines)
        if (node.line() && node.token() == tag_token && chunk::text_at(*node.line(), 1) == id)
            return node.line();
    return nullptr;
}

std::string all_tags(const Project& project) {
    std::string ids;
    if (const chunk::Block* block = find_block(project, metadata_token))
        for (const chunk::Node& node : block->lines)
            if (node.line() && node.token() == tag_token)
                ids.append(ids.empty() ? "" : ";").append(chunk::text_at(*node.line(), 1));
    return ids;
}

// An empty value removes the tag.
void set_tag(Project& project, std::string_view id, std::string_view value) {
    chunk::Lines& lines = block_to_edit(project, metadata_token).lines;
    const auto is_tag = [id](const chunk::Node& node) {
        return node.line() && node.token() == tag_token && chunk::text_at(*node.line(), 1) == id;
    };
    const auto present = std::ranges::find_if(lines, is_tag);
    if (present != lines.end() && chunk::text_at(*present->line(), 2) == value)
        return;
    const std::string content =
        std::string(tag_token) + " " + chunk::as_word(id) + " " + chunk::as_word(value);
    if (value.empty())
        std::erase_if(lines, is_tag);
    else if (present != lines.end())
        *present = chunk::Text::made(content);
    else
        lines.emplace_back(chunk::Text::made(content));
}

// "ID3:TIT2" gets a tag, "ID3:TIT2|text" sets it; an empty text gets the names of all.
bool get_set_metadata(Project& project, char* text, bool is_set) {
    const std::string given = text;
    const std::size_t bar = given.find('|');
    if (is_set) {
        if (bar == given.npos || bar == 0)
            return false;
        set_tag(project, given.substr(0, bar), given.substr(bar + 1));
        return true;
    }
    if (given.empty())
        return put_text(all_tags(project), text);
    const chunk::Text* line = find_tag(project, given);
    put_text(line ? chunk::text_at(*line, 2) : "", text);
    return line != nullptr;
}

std::optional<std::size_t> to_number(std::string_view text) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

bool get_marker_id(Project& project, std::string_view index, char* text) {
    const auto wanted = to_number(index);
    std::size_t place = 0;
    chunk::Guid id;
    project.markers.edit([&](project::Marker& marker) {
        if (place++ != wanted)
            return;
        if (!marker.id)
            marker.id = project.guids.next();
        id = marker.id;
    });
    put_text(id ? chunk::text_of(id) : "", text);
    return static_cast<bool>(id);
}

bool find_marker_by_id(const Project& project, std::string_view text, char* index) {
    const auto id = chunk::guid_of(text);
    const auto& markers = project.markers.all();
    const auto marker =
        std::ranges::find_if(markers, [&](const project::Marker& known) { return id && known.id == *id; });
    put_text(marker == markers.end() ? "" : std::to_string(marker - markers.begin()), index);
    return marker != markers.end();
}

// Groups are counted from 1, in the lines from 0.
bool get_set_group_name(Project& project, std::string_view number, char* text, bool is_set) {
    constexpr std::size_t last_group = 64;
    constexpr std::string_view token = "GROUP_NAME";
    const auto group = to_number(number);
    if (!group || *group < 1 || *group > last_group)
        return false;
    const auto is_name = [&](const chunk::Node& node) {
        return node.line() && node.token() == token &&
               chunk::number_at(*node.line(), 1, -1.0) == static_cast<double>(*group - 1);
    };
    if (is_set)
        rpp::give_lines(project);
    chunk::Lines* lines = project.source ? &project.source->document.root.lines : nullptr;
    const auto line = lines ? std::ranges::find_if(*lines, is_name) : chunk::Lines::iterator();
    const bool exists = lines && line != lines->end();
    if (!is_set)
        return put_text(exists ? chunk::text_at(*line->line(), 2) : "", text);
    if (exists && *text)
        chunk::set_word(*line->line(), 2, chunk::in_quotes(text));
    else if (exists)
        lines->erase(line);
    else if (*text)
        rpp::insert(project, chunk::Text::made(std::string(token) + " " + std::to_string(*group - 1) + " " +
                                               chunk::in_quotes(text)));
    return true;
}

bool get_set_record_path(Project& project, char* text, bool is_set) {
    if (!is_set)
        return put_text(project.record_path.string(), text);
    project.record_path = path_text::path_of(text);
    return true;
}

bool get_set_text(Workstation& workstation, Project& project, const char* parameter, char* text,
                  bool is_set) {
    if (!parameter || !text)
        return false;
    const std::string_view key = parameter;
    const auto after = [key](std::string_view prefix) {
        return key.starts_with(prefix) ? std::optional(key.substr(prefix.size())) : std::nullopt;
    };
    if (key == "PROJECT_NAME" && !is_set)
        return put_text(project.file.filename().string(), text);
    if (key == "RECORD_PATH")
        return get_set_record_path(project, text, is_set);
    if (key == metadata_token)
        return get_set_metadata(project, text, is_set);
    if ((key == "RENDER_TARGETS" || key == "RENDER_STATS") && !is_set)
        return put_text("", text); // nothing has been rendered
    if (const auto index = after("MARKER_GUID:"); index && !is_set)
        return get_marker_id(project, *index, text);
    if (const auto id = after("MARKER_INDEX_FROM_GUID:"); id && !is_set)
        return find_marker_by_id(project, *id, text);
    if (const auto group = after("TRACK_GROUP_NAME:"))
        return get_set_group_name(project, *group, text, is_set);
    if (const auto known = std::ranges::find(text_places, key, &TextPlace::key); known != text_places.end()) {
        if (!is_set)
            return put_text(rpp::text_of(project, known->place), text);
        rpp::set_text(project, known->place, text);
        return true;
    }
    if (const auto known = std::ranges::find(format_blocks, key, &FormatBlock::key);
        known != format_blocks.end()) {
        if (!is_set)
            return put_text(format_text(project, known->token), text);
        set_format(project, known->token, text);
        return true;
    }
    report_unknown_key(workstation, "GetSetProjectInfo_String", parameter);
    return false;
}

} // namespace

std::span<const workstation::HostFunction> project_setting_functions() {
    static const workstation::HostFunction table[] = {
        {"GetSetProjectInfo", host_function<get_set_number>(
                                  "project,desc,value,is_set",
                                  "Gets or sets PROJECT_SRATE, RENDER_SETTINGS, RENDER_BOUNDSFLAG, ...")},
        {"GetSetProjectInfo_String",
         host_function<get_set_text>(
             "project,desc,valuestrNeedBig,is_set",
             "Gets or sets PROJECT_TITLE, RECORD_PATH, RENDER_FILE, RENDER_PATTERN, RENDER_METADATA, "
             "...; gets PROJECT_NAME")},
    };
    return table;
}

} // namespace headless::functions
