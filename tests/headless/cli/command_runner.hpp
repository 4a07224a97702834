#pragma once
// Runs the built command in a folder of its own, on recordings that the test makes.

#include "tests/headless/support/sound_files.hpp"

#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sstream>
#include <sys/resource.h>
#include <sys/wait.h>

namespace headless::test {

inline std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

struct Outcome {
    int status = -1; ///< exit status, -1 when the program was ended by a signal
    std::string output;
    std::string errors;
};

/// Syllables of falling and rising level, two a second, 16000 frames a second at 16 bits.
inline void write_speech(const std::filesystem::path& file, double length_seconds, int channels = 1) {
    constexpr double levels[] = {0.05, 0.2, 0.5, 0.9, 0.3, 0.1};
    auto samples = tone(length_seconds, 1.0, 16000, channels, 440.0);
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double seconds = static_cast<double>(i) / (16000.0 * channels);
        const double swell = std::abs(std::sin(2.0 * std::numbers::pi * seconds));
        samples[i] *= static_cast<float>(levels[static_cast<std::size_t>(seconds * 2.0) % 6] * swell);
    }
    write_sound(file, samples, 16000, channels, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
}

/// Each test has an empty folder, in which the command runs.
class FelsparCommand : public testing::Test {
protected:
    /// @param output  file that takes the standard output, in the folder or absolute
    Outcome felspar(std::vector<std::string> arguments, const std::string& output = "stdout") const {
        std::vector<char*> words{const_cast<char*>(FELSPAR_PROGRAM)};
        for (std::string& argument : arguments)
            words.push_back(argument.data());
        words.push_back(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            const rlimit memory{max_memory, max_memory};
            const bool is_ready = setrlimit(RLIMIT_AS, &memory) == 0 && chdir(folder.path.c_str()) == 0 &&
                                  dup2(creat(output.c_str(), 0644), STDOUT_FILENO) >= 0 &&
                                  dup2(creat("stderr", 0644), STDERR_FILENO) >= 0;
            _exit(is_ready ? execv(FELSPAR_PROGRAM, words.data()) : 126);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, bytes_of(folder / "stdout"),
                bytes_of(folder / "stderr")};
    }

    std::vector<std::string> ridden_names() const { return names_in(folder / "ridden"); }

    ScratchFolder folder;
    rlim_t max_memory = RLIM_INFINITY; ///< bytes that the command may take
};

} // namespace headless::test
