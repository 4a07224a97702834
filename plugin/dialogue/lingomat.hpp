#pragma once
// LINGOMAT: the import of localised dialogue. The lines of two language folders are paired by file name,
// grouped by fragments of their names, and placed on one timeline, base line before subject line, on separate
// tracks for each group.

#include "host_api/export.hpp"

#include <string>
#include <vector>

namespace mk_api::LINGOMAT {

/// Imports two folders of wav files, including their subfolders, into the current project. The partner of a
/// subject file is the base file with exactly the same name. Its group is the first entry of `trackNameList`
/// that the name contains, ignoring the case of ASCII letters, otherwise "None".
/// @param startPos               seconds from the project's start, or from its end
/// @param mediaInterval          gap in seconds after every item
/// @param startEndType           1: `startPos` counts from the project's end
/// @param isVolMatch             sets each subject item to the momentary maximum of its base item
/// @param isRIDESCRIBER          rides each subject item first; has an effect only with `isVolMatch`
/// @param RIDESCRIBER_ratioType  the ride's `ratioType`
/// @param unmatchedPathListOut   the paths of subject files without a partner are appended to it
/// @returns 0
/// @throws std::filesystem::filesystem_error for a folder that cannot be read, before the project is changed
/// @throws std::bad_alloc, with the tracks and items created so far left in place
MK_EXPORT int LINGOMAT_InsertMediaItems(std::string subjectLangPath, std::string baseLangPath,
                                        double startPos, double mediaInterval, int startEndType,
                                        bool isVolMatch, bool isRIDESCRIBER, int RIDESCRIBER_ratioType,
                                        const std::vector<std::string>& trackNameList,
                                        std::vector<std::string>& unmatchedPathListOut);

} // namespace mk_api::LINGOMAT
