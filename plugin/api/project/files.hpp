#pragma once
// Reads, writes and copies files, lists the files of a folder tree, and splits paths into their parts.
// `filename` is joined to `directory`; an absolute one is used alone. Pipes and devices are not read, and
// nothing waits for them.

#include "host_api/export.hpp"
#include "object/path.hpp"

#include <string>
#include <vector>

namespace MK_FELSPAR {

/// Writes a whole text file. Creates its folder if it is missing.
/// @param mode  0 replaces the file, 1 writes to the first free one of name, "name(1).", "name(2)." ..., 2
/// appends; any other mode only creates the folder and returns false
/// @returns whether the file opened
MK_EXPORT bool WriteFile(const char* directory, const char* filename, const char* text, int mode);

/// Reads a text file. If the last line has no line end, one is added. The output is cut to
/// `textOutNeedBig_sz` - 1 bytes.
/// @returns false, with the output unwritten, if the file cannot be read, or if reading would have to wait: a
/// pipe, or a terminal with no input typed
MK_EXPORT bool ReadFile(const char* directory, const char* filename, char* textOutNeedBig,
                        int textOutNeedBig_sz);

/// Copies a file, replacing one of that name, or a folder with all its contents.
/// @returns false on failure, which may leave a partial copy; also if a folder is copied into itself
MK_EXPORT bool SetCopyFile(const char* copyFilePath, const char* pasteFilePath);

} // namespace MK_FELSPAR

namespace mk_api::path {

/// Appends the paths in a folder tree that have the given extension (without its dot), ignoring case, in the
/// order of the file system. Only names are compared, and folders match too. Links to folders are not
/// followed.
/// @returns false if `folder` is not a folder
/// @throws std::filesystem::filesystem_error for a folder that cannot be read
MK_EXPORT bool GetFilePathList(const std::string& folder, const std::string& extension,
                               std::vector<std::string>& paths);

/// Splits an existing path into its parts.
/// @returns 0, or 1 if it does not exist
/// @throws std::filesystem::filesystem_error
MK_EXPORT int GetPathInfo(const std::string& filePath, mk_object::mk_Path& pathInfo);

} // namespace mk_api::path
