#pragma once
// Folders with a time stamp in their names, and the folder that the host records to. Texts go out cut to the
// buffer's size less 1 byte. Paths are joined so that an absolute right side stands alone.

#include "host/export.hpp"
#include "host/host_types.hpp"

#include <string>

namespace MK_FELSPAR {

/// Makes the folder `parentPath`/`folderName`, with a local time stamp behind the name, and all missing
/// folders above it. One that exists is no failure.
/// @param timeType  of the stamp: 1 "MMDD_hhmm", 2 "MMDD_hhmmss", 3 "YYYYMMDD_hhmmss", any other none
/// @throws std::filesystem::filesystem_error
MK_EXPORT void SetFolderFolder_Common(std::string parentPath, const char* folderName, int timeType,
                                      std::string& fullPath, std::string& composedName);

/// Makes such a folder in the project's path, or in the host's resource path. @returns false, with nothing
/// written, when it cannot be made
MK_EXPORT bool SetProjectPathFolder(const char* folderName, int timeType, char* fullPathOut,
                                    int fullPathOut_sz, char* addPathOut, int addPathOut_sz);
MK_EXPORT bool SetResoucePathFolder(const char* folderName, int timeType, char* fullPathOut,
                                    int fullPathOut_sz, char* addPathOut, int addPathOut_sz);

/// Makes such a folder in any folder.
MK_EXPORT bool SetPathFolder(const char* folderPath, const char* folderName, int timeType, char* fullPathOut,
                             int fullPathOut_sz);

/// Sets the project's record path, to at most 1,023 bytes, and gives the one before. Makes no folder.
/// @returns true
MK_EXPORT bool SetProjectInfoRecPath(ReaProject* projID, const char* path, char* beforePathOut,
                                     int beforePathOut_sz);

/// Joins `path` to the project's record path. What is stored is the text as cut to `afterPathOut_sz`. Makes
/// no folder.
/// @returns false, with nothing stored, without a buffer for that text
MK_EXPORT bool SetProjectInfoRecAddPath(ReaProject* projID, const char* path, char* beforePathOut,
                                        int beforePathOut_sz, char* afterPathOut, int afterPathOut_sz);

} // namespace MK_FELSPAR
