#pragma once
// The plug-in's logic, entered in this process on a living headless host, and recordings to feed it.

#include "headless/functions/all_functions.hpp"
#include "headless/workstation/workstation.hpp"
#include "host_api/host_functions.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace mk_test {

inline constexpr int sample_rate = 8000;

/// Speech-like: bursts of tone at levels that change every few hundred milliseconds, with pauses.
std::vector<float> babble(double seconds, unsigned int seed);

/// A new project in a new host, with the plug-in entered. What GetFunc answers can be overruled by name: null
/// is a function that the host lacks.
class BoundPlugin : public ::testing::Test {
protected:
    BoundPlugin();
    ~BoundPlugin() override;

    /// Enters the plug-in again, so that it sees the host as it is overruled now.
    void enter();

    /// Overrules what GetFunc answers from now on; bound pointers change at the next `enter`.
    template <class F>
    static void overrule(const std::string& name, F* function) {
        overruled[name] = reinterpret_cast<void*>(function);
    }

    /// What the plug-in gets for a name.
    static void* get_func(const char* name);

    /// An item over a new wav file of these samples on a new track.
    headless::project::Item& add_item(const std::vector<float>& samples, double position_seconds = 0.0,
                                      const std::string& name = "line.wav");

    static MediaItem* handle(headless::project::Item& item) {
        return reinterpret_cast<MediaItem*>(headless::workstation::Workstation::handle(item));
    }
    static MediaTrack* handle(headless::project::Track& track) {
        return reinterpret_cast<MediaTrack*>(headless::workstation::Workstation::handle(track));
    }

    static constexpr int yes = 6, no = 7; ///< the host's button codes
    /// Message boxes that were shown; each is answered with `message_box_answer`.
    static inline std::vector<std::string> messages;
    static inline int message_box_answer = no;

    headless::test::ScratchFolder folder; ///< also the project's record path and the host's resource folder
    headless::workstation::Workstation workstation{headless::functions::all_functions()};

private:
    static inline std::map<std::string, void*> overruled;
    static inline headless::workstation::Workstation* host = nullptr;
    static inline std::string resource_folder;
    reaper_plugin_info_t record{0x20E, nullptr, nullptr, &get_func};
};

} // namespace mk_test
