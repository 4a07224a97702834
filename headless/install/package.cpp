#include "headless/install/package.hpp"

#include "common/paths.hpp"
#include "headless/base/folder.hpp"
#include "headless/install/manifest.hpp"

#include <optional>
#include <system_error>

namespace headless::install {
namespace {

namespace fs = std::filesystem;

constexpr int levels_above = 2; ///< from `lib/felspar/` to the folder that holds `share/`

struct Contents {
    fs::path scripts;
    fs::path stubs;
};

std::optional<Contents> contents_of(const fs::path& folder) {
    const fs::path shared = folder / "share" / "felspar";
    for (const Contents& contents : {Contents{folder / "scripts" / "lua", folder / "stubs"},
                                     Contents{shared / "scripts" / "lua", shared / "luals"}}) {
        std::error_code missing;
        if (fs::is_directory(contents.scripts, missing) && fs::is_directory(contents.stubs, missing))
            return contents;
    }
    return std::nullopt;
}

Result<Contents> find_contents(const fs::path& plugin) {
    std::error_code error;
    fs::path folder = folder_of(paths::absolute(plugin, error));
    for (int level = 0; level <= levels_above; ++level, folder = folder.parent_path())
        if (auto contents = contents_of(folder))
            return *contents;
    return tl::unexpected(path_failure(
        plugin, "the example scripts and the definitions for editors that belong to it are not there"));
}

/// Adds the Lua files that lie directly in the folder.
Result<void> add_files(Package& package, const fs::path& folder, const std::string& target) {
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (entry->path().extension() == ".lua")
            package.emplace(target + entry->path().filename().string(), entry->path());
    return error ? tl::unexpected(system_failure(folder, error.value())) : Result<void>();
}

} // namespace

std::string plugin_path(Platform platform) {
    const char* suffix = platform == Platform::windows ? ".dll"
                         : platform == Platform::macos ? ".dylib"
                                                       : ".so";
    return std::string("UserPlugins/") + library_name + suffix;
}

Result<Package> find_package(const fs::path& plugin, Platform platform) {
    Package package{{plugin_path(platform), plugin}};
    const std::string folder = fs::path(manifest_path).parent_path().generic_string() + "/";
    return find_contents(plugin).and_then([&](const Contents& contents) {
        return add_files(package, contents.scripts, folder)
            .and_then([&] { return add_files(package, contents.stubs, folder + "stubs/"); })
            .map([&] { return package; });
    });
}

} // namespace headless::install
