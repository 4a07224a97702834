#pragma once
// Finds what exact pairing of file names drops silently: base lines without a subject line, names that nearly
// match, names that occur twice on one side.

#include "headless/base/failure.hpp"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace headless::matching {

/// Finds all wav files (extension in any letter case) in the folder and below it, as the import does: links
/// to folders are not followed, links without a target do not count. Sorted by the bytes of the paths.
/// @returns a failure that names the folder if a folder cannot be read
Result<std::vector<std::filesystem::path>> find_lines(const std::filesystem::path& folder);

/// A subject line without a partner, and a base line that it may be meant for.
struct NearLine {
    std::filesystem::path subject;
    std::filesystem::path base;
    std::vector<std::string_view> differences; ///< as differences_between gives them
};

/// Files with the same name on one side.
struct SameName {
    std::string name;
    std::vector<std::filesystem::path> files;
};

struct LineSurvey {
    std::size_t pairs = 0; ///< subject lines with a base line of the same name
    std::vector<std::filesystem::path> unused_bases;
    std::vector<NearLine> near_lines;
    std::vector<SameName> same_subject_names;
    std::vector<SameName> same_base_names;
};

/// Takes time in proportion to the number of names. All lists follow the order of `subjects` and `bases`, or
/// of the names.
LineSurvey survey_lines(const std::vector<std::filesystem::path>& subjects,
                        const std::vector<std::filesystem::path>& bases);

} // namespace headless::matching
