#pragma once
// Folders with a time stamp in their names, and the folder that the host records to. Output strings are cut
// to the size of their buffer less 1 byte. Paths are joined so that an absolute right side is used alone.

#include "host_api/export.hpp"
#include "host_api/host_types.hpp"

#include <string>

namespace MK_FELSPAR {

/// Creates the folder `parentPath`/`folderName`, with a local time stamp added to the name, and all missing
/// folders above it. A folder that already exists is not an error.
/// @param timeType  format of the stamp: 1 "MMDD_hhmm", 2 "MMDD_hhmmss", 3 "YYYYMMDD_hhmmss", any other none
/// @throws std::filesystem::filesystem_error
MK_EXPORT void SetFolderFolder_Common(std::string parentPath, const char* folderName, int timeType,
                                      std::string& fullPath, std::string& composedName);

/// Creates such a folder in the project's path, or in the host's resource path.
/// @returns false, with nothing written, if it cannot be created
MK_EXPORT bool SetProjectPathFolder(const char* folderName, int timeType, char* fullPathOut,
                                    int fullPathOut_sz, char* addPathOut, int addPathOut_sz);
MK_EXPORT bool SetResoucePathFolder(const char* folderName, int timeType, char* fullPathOut,
                                    int fullPathOut_sz, char* addPathOut, int addPathOut_sz);

/// Creates such a folder in any folder.
MK_EXPORT bool SetPathFolder(const char* folderPath, const char* folderName, int timeType, char* fullPathOut,
                             int fullPathOut_sz);

/// Sets the project's record path, to at most 1,023 bytes, and returns the previous one in `beforePathOut`.
/// Creates no folder.
/// @returns true
MK_EXPORT bool SetProjectInfoRecPath(ReaProject* projID, const char* path, char* beforePathOut,
                                     int beforePathOut_sz);

/// Joins `path` to the project's record path and stores the result as cut to fit `afterPathOut_sz`. Creates
/// no folder.
/// @returns false, with nothing stored, if there is no buffer for the result
MK_EXPORT bool SetProjectInfoRecAddPath(ReaProject* projID, const char* path, char* beforePathOut,
                                        int beforePathOut_sz, char* afterPathOut, int afterPathOut_sz);

} // namespace MK_FELSPAR
