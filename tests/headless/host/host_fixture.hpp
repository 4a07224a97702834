#pragma once
// A workstation and a folder of its own for each test, and calls as a plug-in makes them.

#include "headless/host/workstation.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace headless {

/// Samples of a file, interleaved.
struct Recording {
    int sample_rate = 0;
    int channels = 0;
    std::vector<float> samples;
};

Recording read_recording(const std::filesystem::path& file);

extern const int wav_float;

class HostTest : public testing::Test {
protected:
    HostTest();
    ~HostTest() override;

    /// The host function of that name, called through its address.
    template <class Signature, class... Arguments>
    auto call(const char* name, Arguments... arguments) {
        auto* function = workstation.function_as<Signature>(name);
        EXPECT_NE(function, nullptr) << name;
        return function(arguments...);
    }

    /// A file in the test's folder: a 32-bit float wav file unless another of libsndfile's formats is named.
    std::filesystem::path write_recording(const std::string& name, const Recording& recording,
                                          int format = wav_float) const;

    /// An item at `position_seconds` on a track of its own, playing a file of constant samples.
    Item& insert_level(const std::string& name, float level, double length_seconds,
                       double position_seconds = 0.0);

    Workstation workstation;
    std::filesystem::path folder; ///< also the project's record path
};

} // namespace headless
