#include "tests/plugin/support/bound_plugin.hpp"

#include "host/entry.hpp"
#include "tests/headless/support/sound_files.hpp"

#include <cmath>
#include <cstdlib>
#include <numbers>
#include <random>

namespace mk_test {

std::vector<float> babble(double seconds, int sample_rate, unsigned int seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> level_db(-60.0, -1.0);
    std::uniform_int_distribution<int> burst_ms(20, 400);
    std::vector<float> samples(static_cast<std::size_t>(seconds * sample_rate));
    double level = 0.0;
    std::size_t burst_end = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (i >= burst_end) {
            level = random() % 5 == 0 ? 0.0 : std::pow(10.0, level_db(random) / 20.0);
            burst_end = i + static_cast<std::size_t>(burst_ms(random) * sample_rate / 1000);
        }
        const double phase = 2.0 * std::numbers::pi * 330.0 * static_cast<double>(i) / sample_rate;
        samples[i] = static_cast<float>(level * std::sin(phase));
    }
    return samples;
}

std::vector<std::string> BoundPlugin::messages;
int BoundPlugin::message_box_answer = 7;
std::map<std::string, void*> BoundPlugin::overruled;
headless::Workstation* BoundPlugin::host = nullptr;

void* BoundPlugin::get_func(const char* name) {
    const auto found = overruled.find(name);
    return found != overruled.end() ? found->second : host->function(name);
}

BoundPlugin::BoundPlugin() {
    host = &workstation;
    overruled.clear();
    messages.clear();
    message_box_answer = 7;
    workstation.project().record_path = folder.path;
    overrule(
        "ShowMessageBox", +[](const char* text, const char*, int) {
            messages.emplace_back(text);
            return message_box_answer;
        });
    enter();
}

BoundPlugin::~BoundPlugin() { ReaperPluginEntry(nullptr, nullptr); }

void BoundPlugin::enter() { EXPECT_EQ(ReaperPluginEntry(nullptr, &record), 1); }

headless::Item& BoundPlugin::add_item(const std::vector<float>& samples, double position_seconds,
                                      const std::string& name) {
    headless::Project& project = workstation.project();
    headless::Track& track = project.insert_track(project.tracks().size());
    const auto item = workstation.insert_audio(
        track, headless::test::write_sound(folder / name, samples, 8000), position_seconds);
    if (!item) {
        ADD_FAILURE() << item.error().message;
        std::abort();
    }
    return **item;
}

} // namespace mk_test
