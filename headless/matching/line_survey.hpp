#pragma once
// The lines of two folders: which are pairs, and what the pairing leaves over. File names must be equal byte
// for byte, so lines that were meant as a pair are easily missed.

#include "headless/base/failure.hpp"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace headless::matching {

/// Finds all wav files (extension in any letter case) in the folder and below it. Links to folders are not
/// followed, links without a target do not count.
/// @returns the lines in the order in which the system lists them, which is the import's order as well; a
/// failure that names the path if a folder or line cannot be read
Result<std::vector<std::filesystem::path>> find_lines(const std::filesystem::path& folder);

/// A subject line and its partner.
struct LinePair {
    std::filesystem::path subject;
    std::filesystem::path base;
};

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

/// All lists are sorted by the bytes of the subject paths, the paths or the names.
struct LineSurvey {
    std::vector<LinePair> pairs;
    std::vector<std::filesystem::path> unpaired_subjects;
    std::vector<std::filesystem::path> unpaired_bases;
    std::vector<NearLine> near_lines;
    std::vector<SameName> same_subject_names;
    std::vector<SameName> same_base_names;
};

/// Pairs the lines as the import does: the partner of a subject line is the first base line of the same name.
/// Takes time in proportion to the number of names, apart from sorting.
/// @param subjects, bases  in the order of find_lines
LineSurvey survey_lines(std::vector<std::filesystem::path> subjects,
                        std::vector<std::filesystem::path> bases);

} // namespace headless::matching
