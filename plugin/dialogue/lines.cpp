#include "dialogue/lines.hpp"

#include "api/project/files.hpp"
#include "api/project/strings.hpp"

#include <algorithm>

namespace mk_api::LINGOMAT {

std::vector<Line> read_lines(const std::string& folder) {
    std::vector<std::string> paths;
    path::GetFilePathList(folder, "wav", paths);
    std::vector<Line> lines;
    lines.reserve(paths.size());
    for (const std::string& found : paths) {
        mk_object::mk_Path info;
        if (path::GetPathInfo(found, info) == 0) // otherwise it has been deleted since
            lines.push_back({info.FileName->value, info.FilePath->value});
    }
    return lines;
}

std::string master_name(const std::string& file_name, const std::vector<std::string>& fragments) {
    const auto contained = std::ranges::find_if(fragments, [&](const std::string& fragment) {
        bool is_included = false;
        string::CheckIncludeString(file_name.c_str(), fragment.c_str(), &is_included);
        return is_included;
    });
    return contained == fragments.end() ? "None" : *contained;
}

LinesByName::LinesByName(std::vector<Line> lines) {
    lines_.reserve(lines.size());
    for (Line& line : lines) {
        std::string name = line.name;
        lines_.try_emplace(std::move(name), std::move(line));
    }
}

const Line* LinesByName::find(const std::string& name) const {
    const auto line = lines_.find(name);
    return line == lines_.end() ? nullptr : &line->second;
}

} // namespace mk_api::LINGOMAT
