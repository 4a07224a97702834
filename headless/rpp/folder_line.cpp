#include "headless/rpp/folder_line.hpp"

#include "headless/rpp/fields.hpp"

#include <string>

namespace headless::rpp {
namespace {

constexpr int opens_folder = 1;
constexpr int closes_folders = 2;

int type_of(int change) { return change == 0 ? 0 : change > 0 ? opens_folder : closes_folders; }

} // namespace

int read_depth_change(const chunk::Text& line) {
    if (chunk::word(line.content(), 2))
        return std::min(to_int(chunk::number_at(line, 2, 0.0)), 1);
    const int type = to_int(chunk::number_at(line, 1, 0.0));
    return type == closes_folders ? -1 : type == opens_folder ? 1 : 0;
}

chunk::Text with_depth_change(const chunk::Text& line, int change) {
    chunk::Text changed = line;
    if (read_depth_change(line) == change)
        return changed;
    const bool is_short = !chunk::word(line.content(), 2);
    chunk::set_word(changed, 1, std::to_string(type_of(change)));
    if (!is_short || change < -1)
        chunk::set_word(changed, 2, std::to_string(change));
    return changed;
}

} // namespace headless::rpp
