#include "headless/cli/plugin_location.hpp"

#include "headless/cli/path_option.hpp"
#include "headless/install/package.hpp"
#include "headless/system/library.hpp"
#include "headless/system/program.hpp"

#include <CLI/CLI.hpp>

#include <array>
#include <string>
#include <system_error>

namespace headless::cli {
namespace {

namespace fs = std::filesystem;

const std::string name = install::library_name;
const std::string long_name = "lib" + name + "_for_6.x";

} // namespace

void add_plugin_option(CLI::App& command, std::filesystem::path& given) {
    add_path_option(command, "--plugin", given, "The plug-in's library, when it is not in its usual place")
        ->type_name("PATH");
}

Result<std::filesystem::path> find_plugin(const std::filesystem::path& given) {
    if (!given.empty())
        return given;
    const fs::path root = system::program_file().parent_path().parent_path();
    const std::string suffix(system::library_suffix());
    const std::array places{
        root / "lib" / "felspar" / (long_name + suffix), // installed
        root / "lib" / (long_name + suffix),             // built
        root / (name + suffix),                          // in an archive
    };
    for (const fs::path& place : places) {
        std::error_code error;
        if (fs::exists(place, error))
            return place;
    }
    return tl::unexpected(Failure{"the plug-in is neither " + places[0].string() + " nor " +
                                  places[1].string() + " nor " + places[2].string() +
                                  ": say where it is with --plugin"});
}

Result<workstation::PluginLibrary> load_plugin(const std::filesystem::path& given,
                                               workstation::Workstation& workstation) {
    return find_plugin(given).and_then([&](const std::filesystem::path& file) {
        return workstation::PluginLibrary::load(file, workstation);
    });
}

} // namespace headless::cli
