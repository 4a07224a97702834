// What the host functions cost that an import of so many pairs calls: at every insertion the whole selection
// is saved, cleared and restored, and the new item stays selected. Items a second are those of the calls on
// selected items.

#include "headless/functions/all_functions.hpp"
#include "headless/workstation/workstation.hpp"

#include <benchmark/benchmark.h>
#include <sndfile.h>

#include <array>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <vector>

namespace headless {
namespace {

struct ShortFile {
    ShortFile() {
        SF_INFO info{};
        info.samplerate = 8000;
        info.channels = 1;
        info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
        SNDFILE* handle = sf_open(path.c_str(), SFM_WRITE, &info);
        const std::array<short, 80> samples{};
        sf_write_short(handle, samples.data(), 80);
        sf_close(handle);
    }
    ~ShortFile() { std::filesystem::remove(path); }

    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("felspar bench " + std::to_string(getpid()) + ".wav");
};

/// The calls of one insertion, in their order.
class Inserter {
public:
    explicit Inserter(const workstation::Workstation& host)
        : count_(host.function_as<int(ReaProject*)>("CountSelectedMediaItems")),
          get_(host.function_as<MediaItem*(ReaProject*, int)>("GetSelectedMediaItem")),
          select_(host.function_as<void(MediaItem*, bool)>("SetMediaItemSelected")),
          select_track_(host.function_as<void(MediaTrack*)>("SetOnlyTrackSelected")),
          insert_(host.function_as<int(const char*, int)>("InsertMedia")) {}

    /// @returns the number of calls on selected items
    std::int64_t insert(MediaTrack* track, const std::filesystem::path& file) const {
        select_track_(track);
        std::vector<MediaItem*> selected(static_cast<std::size_t>(count_(nullptr)));
        for (int index = 0; MediaItem * &item : selected)
            item = get_(nullptr, index++);
        for (MediaItem* item : selected)
            select_(item, false);
        insert_(file.c_str(), 0);
        benchmark::DoNotOptimize(get_(nullptr, 0));
        for (MediaItem* item : selected)
            select_(item, true);
        return 3 * static_cast<std::int64_t>(selected.size());
    }

private:
    int (*count_)(ReaProject*);
    MediaItem* (*get_)(ReaProject*, int);
    void (*select_)(MediaItem*, bool);
    void (*select_track_)(MediaTrack*);
    int (*insert_)(const char*, int);
};

void insert_pairs(benchmark::State& state) {
    const ShortFile file;
    std::int64_t calls = 0;
    for (auto _ : state) {
        workstation::Workstation workstation{functions::all_functions()};
        const Inserter inserter(workstation);
        MediaTrack* base = workstation::Workstation::handle(workstation.project().insert_track(0));
        MediaTrack* subject = workstation::Workstation::handle(workstation.project().insert_track(1));
        for (std::int64_t pair = 0; pair < state.range(0); ++pair) {
            calls += inserter.insert(base, file.path);
            calls += inserter.insert(subject, file.path);
        }
    }
    state.SetItemsProcessed(calls);
}

BENCHMARK(insert_pairs)->Arg(2500)->Arg(5000)->Arg(10000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace headless
