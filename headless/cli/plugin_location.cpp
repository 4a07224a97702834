#include "headless/cli/plugin_location.hpp"

#include <CLI/CLI.hpp>

#include <system_error>

namespace headless::cli {

void add_plugin_option(CLI::App& command, std::filesystem::path& given) {
    command.add_option("--plugin", given, "The plug-in's library, when it is not in its usual place")
        ->type_name("PATH");
}

Result<std::filesystem::path> find_plugin(const std::filesystem::path& given) {
    if (!given.empty())
        return given;
    constexpr const char* file_name = "libreaper_MERIDEK_FELSPAR_for_6.x.so";
    std::error_code error;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::filesystem::path libraries = program.parent_path().parent_path() / "lib";
    const std::filesystem::path installed = libraries / "felspar" / file_name;
    const std::filesystem::path built = libraries / file_name;
    if (std::filesystem::exists(installed, error))
        return installed;
    if (std::filesystem::exists(built, error))
        return built;
    return tl::unexpected(Failure{"the plug-in is neither " + installed.string() + " nor " + built.string() +
                                  ": say where it is with --plugin"});
}

Result<workstation::PluginLibrary> load_plugin(const std::filesystem::path& given,
                                               workstation::Workstation& workstation) {
    return find_plugin(given).and_then([&](const std::filesystem::path& file) {
        return workstation::PluginLibrary::load(file, workstation);
    });
}

} // namespace headless::cli
