#pragma once
// Text files, copies, the files of a folder tree, and paths taken apart. `filename` is joined to `directory`;
// an absolute one stands alone. Pipes and devices are neither read nor waited for.

#include "host/export.hpp"
#include "object/path.hpp"

#include <string>
#include <vector>

namespace MK_FELSPAR {

/// Writes a whole text file, in a folder that is made when it is missing.
/// @param mode  0 replaces the file, 1 writes to the first of name, "name(1).", "name(2)." ... that is free,
/// 2 appends;
///              with any other mode nothing but the folder is made, and the result is false
/// @returns whether the file opened
MK_EXPORT bool WriteFile(const char* directory, const char* filename, const char* text, int mode);

/// Reads a text file; a last line without a line end gets one. The output is cut to `textOutNeedBig_sz` - 1
/// bytes.
/// @returns false, with the output unwritten, for what is no readable file
MK_EXPORT bool ReadFile(const char* directory, const char* filename, char* textOutNeedBig,
                        int textOutNeedBig_sz);

/// Copies a file over one of that name, or a folder with all that is in it.
/// @returns false on failure, which may leave a part copied; also for a folder copied into itself
MK_EXPORT bool SetCopyFile(const char* copyFilePath, const char* pasteFilePath);

} // namespace MK_FELSPAR

namespace mk_api::path {

/// Appends the paths in a folder tree whose extension is the given one (without its dot), ignoring case, in
/// the order of the file system. Names alone count, those of folders too. Links to folders are not followed.
/// @returns false when `folder` is no folder
/// @throws std::filesystem::filesystem_error for a folder that cannot be read
MK_EXPORT bool GetFilePathList(const std::string& folder, const std::string& extension,
                               std::vector<std::string>& paths);

/// Takes an existing path apart. @returns 0, or 1 when it does not exist
/// @throws std::filesystem::filesystem_error
MK_EXPORT int GetPathInfo(const std::string& filePath, mk_object::mk_Path& pathInfo);

} // namespace mk_api::path
