#pragma once
// Installs the plug-in into the workstation's resource folder, and removes it. A list of what was installed,
// with sums (manifest.hpp), tells which files are ours: others, and those that the user has changed, stay.

#include "headless/base/failure.hpp"
#include "headless/install/package.hpp"
#include "headless/report/install_report.hpp"

#include <filesystem>
#include <vector>

namespace headless::install {

struct Options {
    bool is_dry_run = false; ///< only tells what would be done
    bool replaces = false;   ///< moves a file that is not ours to a free name NAME.saved, NAME.saved-2, ...
};

/// Brings the folder to what the package has: also removes what an earlier version installed and this one does
/// not have. All files are written before the first one gets its name, so a full disk changes nothing. What is
/// to be done is listed in the folder then, so an installation that was cut off can be repeated or removed.
/// Each file is replaced in one step, and a program that has the old one open keeps that; but a `.dll` gets the
/// name NAME.felspar-old first, and goes when nobody has it loaded. Fails at the first file that cannot be
/// read or written, naming it, and if a signal came before the first file has its name.
Result<std::vector<report::InstalledFile>>
install(const Package& package, const std::filesystem::path& resource_folder, const Options& options);

/// Removes what was installed, then the folders that were made for it if they are empty. Without a list there
/// is nothing to remove. Fails at the first file that cannot be removed; what is left stays listed. Fails
/// before the first one if a signal came.
Result<std::vector<report::InstalledFile>> uninstall(const std::filesystem::path& resource_folder,
                                                     const Options& options);

} // namespace headless::install
