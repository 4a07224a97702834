#pragma once
// What there is to install: the plug-in, the example scripts and the definitions for editors, in an archive
// or where they were built or installed.

#include "headless/base/configuration_folder.hpp"
#include "headless/base/failure.hpp"

#include <filesystem>
#include <map>
#include <string>

namespace headless::install {

/// Files by their paths in the workstation's resource folder, with slashes.
using Package = std::map<std::string, std::filesystem::path>;

/// The plug-in's file name, without the platform's suffix.
inline constexpr const char* library_name = "reaper_MERIDEK_FELSPAR";

/// Where the plug-in lies in the resource folder: under a name that the workstation loads, and by which Lua's
/// `require` finds it.
std::string plugin_path(Platform platform);

/// Lists what belongs to the plug-in. Scripts and definitions are looked for in its folder, then in the two
/// above: `scripts/lua` and `stubs` in an archive, below `share/felspar` in an installation or a build.
/// Fails if they are in none, or cannot be listed.
Result<Package> find_package(const std::filesystem::path& plugin, Platform platform);

} // namespace headless::install
