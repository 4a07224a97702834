#pragma once
// What exact pairing of file names drops without a word: base lines that nobody asked for, names that nearly
// match, names that stand twice on one side.

#include "headless/base/failure.hpp"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// Everything in the folder and below it whose extension is wav, in any case, as the import finds it: links
/// to folders are not followed, names whose target is gone do not count. In byte order of the paths.
/// @returns a failure that names the folder that cannot be read
Result<std::vector<std::filesystem::path>> find_lines(const std::filesystem::path& folder);

/// A subject line without a partner and a base line that may be the one it is meant for.
struct NearLine {
    std::filesystem::path subject;
    std::filesystem::path base;
    std::vector<std::string_view> differences; ///< as differences_between gives them
};

/// Files of one name on one side.
struct SameName {
    std::string name;
    std::vector<std::filesystem::path> files;
};

struct LineSurvey {
    std::size_t pairs = 0; ///< subject lines for whose name there is a base line
    std::vector<std::filesystem::path> unused_bases;
    std::vector<NearLine> near_lines;
    std::vector<SameName> same_subject_names;
    std::vector<SameName> same_base_names;
};

/// Takes about as long as there are names. All lists follow the order of `subjects` and `bases`, or of the
/// names.
LineSurvey survey_lines(const std::vector<std::filesystem::path>& subjects,
                        const std::vector<std::filesystem::path>& bases);

} // namespace headless
