#pragma once
// A workstation with the plug-in loaded, whose project has one track "voice" with one item, and scripts that
// run in it. What a script expects it asserts itself.

#include "headless/functions/all_functions.hpp"
#include "headless/script/script_runner.hpp"
#include "headless/workstation/plugin_library.hpp"
#include "headless/workstation/workstation.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <gmock/gmock.h>

namespace headless::test {

class ScriptTest : public testing::Test {
protected:
    ScriptTest() {
        // Whatever a script takes for a path stays in here.
        std::filesystem::current_path(folder.path);
        setenv("XDG_CONFIG_HOME", "felspar script test", 1);
        project.record_path = folder.path;
        project::Track& track = project.insert_track(0);
        track.name = "voice";
        const auto file = write_sound(folder / "line.wav", tone(0.5, 0.5, 8000), 8000);
        workstation.insert_audio(track, file, 1.0).value();
    }
    ~ScriptTest() override { std::filesystem::current_path(std::filesystem::temp_directory_path()); }

    script::ScriptOutcome run(const std::string& text, std::size_t memory_bytes = std::size_t{1} << 28U) {
        write_bytes(folder / "script.lua", text);
        return script::run_script(workstation, plugin, {folder / "script.lua", {"one", "-2"}, memory_bytes});
    }

    ScratchFolder folder;
    workstation::Workstation workstation{functions::all_functions()};
    workstation::PluginLibrary plugin = workstation::PluginLibrary::load(FELSPAR_PLUGIN, workstation).value();
    project::Project& project = workstation.project();
};

} // namespace headless::test
