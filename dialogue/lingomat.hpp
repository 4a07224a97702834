#pragma once
// LINGOMAT: the import of localised dialogue. The lines of two language folders are paired by file name,
// grouped by fragments of their names, and laid out on one timeline, base line before subject line, on tracks
// for each group.

#include "host/export.hpp"

#include <string>
#include <vector>

namespace mk_api::LINGOMAT {

/// Imports two folders of wav files, each with all below it, into the current project. A subject file's
/// partner is the base file of exactly its name; its group is the first entry of `trackNameList` that the
/// name contains, ignoring the case of ASCII letters, else "None".
/// @param startPos               seconds from the project's start, or from its end
/// @param mediaInterval          seconds behind every item
/// @param startEndType           1: `startPos` counts from the project's end
/// @param isVolMatch             brings each subject item to the momentary maximum of its base item
/// @param isRIDESCRIBER          rides each subject item first; has an effect only with `isVolMatch`
/// @param RIDESCRIBER_ratioType  as the ride takes it
/// @param unmatchedPathListOut   gets the paths of the subject files without a partner appended
/// @returns 0
/// @throws std::filesystem::filesystem_error for a folder that cannot be read, before the project is touched;
///         std::bad_alloc, with the tracks and items made so far left as they are
MK_EXPORT int LINGOMAT_InsertMediaItems(std::string subjectLangPath, std::string baseLangPath,
                                        double startPos, double mediaInterval, int startEndType,
                                        bool isVolMatch, bool isRIDESCRIBER, int RIDESCRIBER_ratioType,
                                        const std::vector<std::string>& trackNameList,
                                        std::vector<std::string>& unmatchedPathListOut);

} // namespace mk_api::LINGOMAT
