#include "tests/plugin/support/bound_plugin.hpp"

#include "entry/entry.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <cmath>
#include <random>

namespace mk_test {

using headless::test::operator+;

std::vector<float> babble(double seconds, unsigned int seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> level_db(-60.0, -1.0), burst_seconds(0.02, 0.4);
    const auto count = static_cast<std::size_t>(seconds * sample_rate);
    std::vector<float> samples;
    while (samples.size() < count) {
        const double level = random() % 5 == 0 ? 0.0 : std::pow(10.0, level_db(random) / 20.0);
        samples = std::move(samples) + headless::test::tone(burst_seconds(random), level, sample_rate);
    }
    samples.resize(count);
    return samples;
}

void* BoundPlugin::get_func(const char* name) {
    const auto found = overruled.find(name);
    return found != overruled.end() ? found->second : host->function(name);
}

BoundPlugin::BoundPlugin() {
    host = &workstation;
    overruled.clear();
    messages.clear();
    message_box_answer = no;
    workstation.project().record_path = folder.path;
    overrule(
        "ShowMessageBox", +[](const char* text, const char*, int) {
            messages.emplace_back(text);
            return message_box_answer;
        });
    resource_folder = folder.path;
    overrule(
        "GetResourcePath", +[] { return resource_folder.c_str(); }); // the user's stays as it is
    enter();
}

BoundPlugin::~BoundPlugin() { ReaperPluginEntry(nullptr, nullptr); }

void BoundPlugin::enter() { EXPECT_EQ(ReaperPluginEntry(nullptr, &record), 1); }

headless::project::Item& BoundPlugin::add_item(const std::vector<float>& samples, double position_seconds,
                                               const std::string& name) {
    headless::project::Project& project = workstation.project();
    headless::project::Track& track = project.insert_track(project.tracks().size());
    const auto file = headless::test::write_sound(folder / name, samples, sample_rate);
    return *workstation.insert_audio(track, file, position_seconds).value();
}

} // namespace mk_test
