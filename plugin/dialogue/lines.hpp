#pragma once
// The recorded lines of a language folder. Their names tell group and partner.

#include <string>
#include <unordered_map>
#include <vector>

namespace mk_api::LINGOMAT {

/// A recorded line.
struct Line {
    std::string name; ///< of the file, extension included
    std::string path; ///< absolute
};

/// Returns the wav files in a folder and everything below it, in file system order. Returns none if `folder`
/// is not a folder.
/// @throws std::filesystem::filesystem_error for a folder that cannot be read
std::vector<Line> read_lines(const std::string& folder);

/// Returns the first fragment that the file name contains, ignoring the case of ASCII letters, otherwise
/// "None".
std::string master_name(const std::string& file_name, const std::vector<std::string>& fragments);

/// Lines by their exact names. If several have the same name, the first one counts.
class LinesByName {
public:
    explicit LinesByName(std::vector<Line> lines);

    /// Returns null if there is no such line. The result lives as long as this object.
    const Line* find(const std::string& name) const;

private:
    std::unordered_map<std::string, Line> lines_;
};

} // namespace mk_api::LINGOMAT
