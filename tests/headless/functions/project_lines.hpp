#pragma once
// A project that was read from a text, and what functions change of its lines.

#include "headless/rpp/rpp.hpp"
#include "tests/headless/workstation/host_fixture.hpp"

#include <algorithm>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace headless {

using Lines = std::vector<std::string>;

inline Lines lines_of(const std::string& text) {
    Lines lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

/// What has to be removed from the first lines ("-") and added ("+") to get the second ones, without indents.
inline Lines difference(const Lines& from, const Lines& to) {
    std::vector<std::vector<std::size_t>> common(from.size() + 1, std::vector<std::size_t>(to.size() + 1));
    for (std::size_t i = from.size(); i-- > 0;)
        for (std::size_t j = to.size(); j-- > 0;)
            common[i][j] =
                from[i] == to[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
    Lines changes;
    const auto add = [&](char sign, const std::string& line) {
        const std::size_t begin = std::min(line.find_first_not_of(' '), line.size());
        changes.push_back(sign + line.substr(begin));
    };
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < from.size() || j < to.size()) {
        if (i < from.size() && j < to.size() && from[i] == to[j]) {
            ++i;
            ++j;
        } else if (i < from.size() && (j == to.size() || common[i + 1][j] >= common[i][j + 1])) {
            add('-', from[i++]);
        } else {
            add('+', to[j++]);
        }
    }
    return changes;
}

class ProjectLines : public HostTest {
protected:
    void read(const std::string& text) {
        text_ = text;
        project.record_path.clear();
        const auto done = rpp::parse_project(project, text, folder.path);
        ASSERT_TRUE(done) << done.error().message;
    }

    std::string written() { return rpp::project_text(project, folder.path); }

    /// What has changed since the last call or since `read`.
    Lines changes() {
        const std::string before = std::exchange(text_, written());
        return difference(lines_of(before), lines_of(text_));
    }

    MediaTrack* track(std::size_t index) const {
        return workstation::Workstation::handle(*project.track(index));
    }

    MediaTrack* master() const { return workstation::Workstation::handle(project.master()); }

    double value(MediaTrack* track, const char* key) const {
        return function<double(MediaTrack*, const char*)>("GetMediaTrackInfo_Value")(track, key);
    }

    bool set_value(MediaTrack* track, const char* key, double value) const {
        return function<bool(MediaTrack*, const char*, double)>("SetMediaTrackInfo_Value")(track, key, value);
    }

private:
    std::string text_;
};

/// The lines of a project with these lines in it.
inline std::string project_of(const std::string& lines) {
    return "<REAPER_PROJECT 0.1 \"7.16/linux-x86_64\" 1712345678\n" + lines + ">\n";
}

} // namespace headless
