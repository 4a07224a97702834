#pragma once
// A workstation and a folder of its own for each test, and its functions as a plug-in gets them.

#include "headless/functions/all_functions.hpp"
#include "headless/workstation/workstation.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <string>
#include <vector>

namespace headless {

using test::fails_telling;
using test::tells;
using testing::ElementsAre;

class HostTest : public testing::Test {
protected:
    HostTest() { project.record_path = folder.path; }

    template <class Signature>
    Signature* function(const char* name) const {
        auto* found = workstation.function_as<Signature>(name);
        return found ? found : throw std::runtime_error(std::string("the host has no ") + name);
    }

    /// On a track of its own, playing a new file of these samples at 8 kHz.
    project::Item& insert_item(const std::vector<float>& samples = std::vector<float>(800, 0.5F),
                               double position_seconds = 0.0, const std::string& name = "line.wav") {
        project::Track& track = project.insert_track(project.tracks().size());
        const auto file = test::write_sound(folder / name, samples, 8000);
        return *workstation.insert_audio(track, file, position_seconds).value();
    }

    test::ScratchFolder folder; ///< also the project's record path
    workstation::Workstation workstation{functions::all_functions()};
    project::Project& project = workstation.project();
};

} // namespace headless
