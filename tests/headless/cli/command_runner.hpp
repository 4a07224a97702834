#pragma once
// Runs the built command in a folder of its own, on recordings that the test makes.

#include "tests/headless/support/scratch_folder.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <string>
#include <vector>

namespace headless {

struct Outcome {
    int status = -1; ///< exit status, -1 when the program was ended by a signal
    std::string output;
    std::string errors;

    /// The output as one object a line.
    std::vector<nlohmann::json> objects() const;
};

struct Recording {
    int sample_rate = 0;
    int channels = 0;
    std::vector<float> samples; ///< interleaved

    bool operator==(const Recording&) const = default;
};

Recording read_recording(const std::filesystem::path& file);

/// Syllables of falling and rising level, two a second, at 16 bits.
void write_speech(const std::filesystem::path& file, double length_seconds, int channels = 1);

/// Each test has an empty folder, in which the command runs.
class FelsparCommand : public testing::Test {
protected:
    /// @param output  file that takes the standard output, in the folder or absolute
    Outcome felspar(const std::vector<std::string>& arguments, const std::string& output = "stdout") const;

    /// Names of what lies in a folder of the test's folder, sorted.
    std::vector<std::string> names_in(const std::string& name) const;

    test::ScratchFolder folder;
};

} // namespace headless
