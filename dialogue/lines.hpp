#pragma once
// The recorded lines of a language folder, and how they are told apart by their names.

#include <string>
#include <unordered_map>
#include <vector>

namespace mk_api::LINGOMAT {

/// A recorded line.
struct Line {
    std::string name; ///< of the file, extension included
    std::string path; ///< absolute
};

/// The wav files in a folder and all below it, in the order of the file system; none when it is no folder.
/// @throws std::filesystem::filesystem_error for a folder that cannot be read
std::vector<Line> read_lines(const std::string& folder);

/// The first fragment that the file name contains, ignoring the case of ASCII letters, else "None".
std::string master_name(const std::string& file_name, const std::vector<std::string>& fragments);

/// Lines by their exact names; of several of one name the first counts.
class LinesByName {
public:
    explicit LinesByName(std::vector<Line> lines);

    /// Null when there is none. It lives as long as this object.
    const Line* find(const std::string& name) const;

private:
    std::unordered_map<std::string, Line> lines_;
};

} // namespace mk_api::LINGOMAT
