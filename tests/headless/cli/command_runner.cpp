#include "tests/headless/cli/command_runner.hpp"

#include "tests/headless/support/sound_files.hpp"

#include <sndfile.hh>

#include <algorithm>
#include <array>
#include <cmath>
#include <fcntl.h>
#include <iterator>
#include <numbers>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace headless {
namespace {

// Relative names are of the folder that the child has entered by then.
void redirect(const char* file, int descriptor) {
    const int target = open(file, O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (target < 0 || dup2(target, descriptor) < 0)
        _exit(126);
}

} // namespace

std::vector<nlohmann::json> Outcome::objects() const {
    std::vector<nlohmann::json> parsed;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);)
        parsed.push_back(nlohmann::json::parse(line));
    return parsed;
}

Recording read_recording(const std::filesystem::path& file) {
    SndfileHandle handle(file.c_str());
    std::vector<float> samples(static_cast<std::size_t>(handle.frames() * handle.channels()));
    handle.readf(samples.data(), handle.frames());
    return {handle.samplerate(), handle.channels(), std::move(samples)};
}

void write_speech(const std::filesystem::path& file, double length_seconds, int channels) {
    constexpr int sample_rate = 16000;
    constexpr std::array levels{0.05, 0.2, 0.5, 0.9, 0.3, 0.1};
    std::vector<float> samples;
    for (int frame = 0; frame < static_cast<int>(length_seconds * sample_rate); ++frame) {
        const double seconds = static_cast<double>(frame) / sample_rate;
        const double level = levels[static_cast<std::size_t>(seconds * 2.0) % levels.size()];
        const double swell = std::abs(std::sin(2.0 * std::numbers::pi * seconds));
        const double sample = level * swell * std::sin(2.0 * std::numbers::pi * 440.0 * seconds);
        samples.insert(samples.end(), static_cast<std::size_t>(channels), static_cast<float>(sample));
    }
    test::write_sound(file, samples, sample_rate, channels, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
}

Outcome FelsparCommand::felspar(const std::vector<std::string>& arguments, const std::string& output) const {
    std::vector<const char*> words{FELSPAR_PROGRAM};
    std::transform(arguments.begin(), arguments.end(), std::back_inserter(words),
                   [](const std::string& argument) { return argument.c_str(); });
    words.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        if (chdir(folder.path.c_str()) != 0)
            _exit(126);
        redirect(output.c_str(), STDOUT_FILENO);
        redirect("stderr", STDERR_FILENO);
        execv(FELSPAR_PROGRAM, const_cast<char* const*>(words.data()));
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, test::bytes_of(folder / "stdout"),
            test::bytes_of(folder / "stderr")};
}

std::vector<std::string> FelsparCommand::names_in(const std::string& name) const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder / name))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace headless
