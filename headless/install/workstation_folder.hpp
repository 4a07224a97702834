#pragma once
// The workstation's resource folder: where it is, and what it tells about the workstation.

#include "headless/base/configuration_folder.hpp"
#include "headless/base/failure.hpp"

#include <filesystem>
#include <string>
#include <vector>

namespace headless::install {

/// All resource folders in their usual places: first the user's own, then those of portable installations,
/// which lie beside the program and have a file reaper.ini. The program is looked for where its installer
/// proposes, and on Linux also in PATH.
std::vector<std::filesystem::path> find_resource_folders(Platform platform, const Environment& environment);

struct WorkstationFolder {
    std::filesystem::path path;
    std::vector<std::filesystem::path> others{}; ///< further resource folders, which were not chosen
    std::string version{};                       ///< that saved the last project; empty if that is not known
    std::string sws{};                           ///< the SWS extension's file name; empty if it is not there
};

/// The folder that the user named, otherwise the first in the usual places, with what it tells. Fails if the
/// named one is no folder, or there is none.
Result<WorkstationFolder> choose_resource_folder(const std::filesystem::path& named, Platform platform,
                                                 const Environment& environment);

} // namespace headless::install
