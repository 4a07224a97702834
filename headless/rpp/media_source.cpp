#include "headless/rpp/media_source.hpp"

#include "common/path_text.hpp"
#include "common/paths.hpp"

#include <algorithm>
#include <cctype>
#include <optional>
#include <utility>

namespace headless::rpp {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view offline_mark = "_OFFLINE_";

// Bits of a section's mode.
constexpr int plays_whole = 1;
constexpr int plays_reversed = 2;

// "C:\..." and "\\server\...": absolute where the project was saved, and to be kept as they are.
bool is_windows_absolute(std::string_view text) {
    return text.starts_with("\\\\") ||
           (text.size() > 2 && std::isalpha(static_cast<unsigned char>(text[0])) != 0 && text[1] == ':' &&
            (text[2] == '\\' || text[2] == '/'));
}

std::string head_of(const project::Source& source) {
    std::string kind(source.offline ? offline_mark : "");
    kind += source.type;
    return "<SOURCE " + chunk::as_word(kind);
}

void write_new(chunk::Output& out, const project::Source& source, const fs::path& folder) {
    out.begin_block(chunk::Text::made(head_of(source)));
    if (source.inner) {
        const project::Section& section = source.section;
        out.line(chunk::Text::made("LENGTH " + chunk::decimal(section.length_seconds)));
        if (section.reversed)
            out.line(chunk::Text::literal("MODE 2"));
        out.line(chunk::Text::made("STARTPOS " + chunk::decimal(section.start_seconds)));
        out.line(chunk::Text::made("OVERLAP " + chunk::decimal(section.overlap_seconds)));
        write_new(out, *source.inner, folder);
    }
    if (!source.file.empty())
        out.line(chunk::Text::made("FILE " + chunk::in_quotes(path_text(source.file, folder))));
    out.end_block(chunk::Text::literal(">"));
}

bool is_of_kind(const chunk::Block& block, const project::Source& source, const fs::path& folder) {
    const project::Source present = read_source(block, folder);
    const bool same_inside = static_cast<bool>(present.inner) == static_cast<bool>(source.inner);
    return present.type == source.type && present.section == source.section && same_inside &&
           present.file.empty() == source.file.empty();
}

class EditedSource {
public:
    EditedSource(chunk::Output& out, const fs::path& folder) : out_(out), folder_(folder) {}

    void write(const chunk::Block& block, const project::Source& source) {
        if (!is_of_kind(block, source, folder_)) {
            write_new(out_, source, folder_);
            return;
        }
        out_.begin_block(head(block.head, source));
        for (const chunk::Node& node : block.lines)
            if (const chunk::Text* line = node.line())
                out_.line(edited(*line, source));
            else if (node.token() == "SOURCE" && source.inner)
                write(*node.block(), *source.inner);
            else
                out_.copy(node);
        out_.end_block(block.end);
    }

private:
    static chunk::Text head(const chunk::Text& present, const project::Source& source) {
        chunk::Text head = present;
        if (chunk::text_at(head, 1).starts_with(offline_mark) != source.offline)
            chunk::set_word(head, 1, chunk::word(head_of(source), 1)->text);
        return head;
    }

    chunk::Text edited(const chunk::Text& present, const project::Source& source) const {
        chunk::Text line = present;
        const std::string_view token = chunk::token(line.content());
        if (token == "FILE" && file_of(chunk::text_at(line, 1), folder_) != source.file)
            chunk::set_word(line, 1, chunk::in_quotes(path_text(source.file, folder_)));
        return line;
    }

    chunk::Output& out_;
    const fs::path& folder_;
};

} // namespace

fs::path file_of(std::string_view text, const fs::path& folder) {
    if (text.empty() || is_windows_absolute(text))
        return path_text::path_of(text);
    fs::path file = paths::normal(paths::join(folder, path_text::path_of(text)));
    std::error_code error;
    if (text.find('\\') == text.npos || fs::exists(file, error))
        return file;
    std::string slashed(text);
    std::ranges::replace(slashed, '\\', '/');
    return (folder / path_text::path_of(slashed)).lexically_normal();
}

std::string path_text(const fs::path& file, const fs::path& folder) {
    if (!paths::is_absolute(file) && is_windows_absolute(file.string()))
        return file.string(); // of another system
    std::error_code ignored;  // a path that cannot be made absolute stays as it is
    const auto whole = [&](const fs::path& path) {
        const auto absolute = paths::normal(paths::absolute(path, ignored));
        return ignored ? path : absolute;
    };
    const auto absolute = whole(file);
    const auto relative = absolute.lexically_relative(whole(folder / ""));
    const bool lies_below = !relative.empty() && *relative.begin() != "..";
    if (!lies_below && paths::has_unseen_server(absolute))
        return absolute.string(); // the general form would lose a separator
    return (lies_below ? relative : absolute).generic_string();
}

project::Source read_source(const chunk::Block& block, const fs::path& folder) {
    project::Source source;
    std::string_view type = chunk::text_at(block.head, 1);
    source.offline = type.starts_with(offline_mark);
    type.remove_prefix(source.offline ? offline_mark.size() : 0);
    source.type = type;
    if (const chunk::Text* line = chunk::find_line(block.lines, "FILE"))
        source.file = file_of(chunk::text_at(*line, 1), folder);
    const chunk::Block* inner = chunk::find_block(block.lines, "SOURCE");
    if (!inner)
        return source;
    source.inner = std::make_shared<project::Source>(read_source(*inner, folder));
    const auto number = [&](std::string_view token) {
        const chunk::Text* line = chunk::find_line(block.lines, token);
        return line ? chunk::number_at(*line, 1, 0.0) : 0.0;
    };
    const int mode = static_cast<int>(number("MODE"));
    source.section.reversed = (mode & plays_reversed) != 0;
    source.section.overlap_seconds = number("OVERLAP");
    if ((mode & plays_whole) == 0) {
        source.section.start_seconds = number("STARTPOS");
        source.section.length_seconds = number("LENGTH");
    }
    return source;
}

bool plays_same(const project::Source& left, const project::Source& right) {
    const bool same_inside =
        left.inner && right.inner ? plays_same(*left.inner, *right.inner) : left.inner == right.inner;
    return same_inside && left.type == right.type && left.file == right.file &&
           left.offline == right.offline && left.section == right.section;
}

void write_source(chunk::Output& out, const chunk::Block* block, const project::Source& source,
                  const fs::path& folder) {
    if (block)
        EditedSource(out, folder).write(*block, source);
    else
        write_new(out, source, folder);
}

chunk::Text moved_line(const chunk::Text& line, std::size_t word, const fs::path& from, const fs::path& to) {
    const std::string_view text = chunk::text_at(line, word);
    if (text.empty() || text.starts_with('/') || is_windows_absolute(text))
        return line;
    chunk::Text moved = line;
    chunk::set_word(moved, word, chunk::in_quotes(path_text(file_of(text, from), to)));
    return moved;
}

} // namespace headless::rpp
