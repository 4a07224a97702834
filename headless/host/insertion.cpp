// Audio files become items: for the command line directly, for plug-ins through InsertMedia.

#include "headless/audio/audio_store.hpp"
#include "headless/host/door.hpp"
#include "headless/host/text.hpp"

#include <string>
#include <vector>

namespace headless {
namespace {

namespace fs = std::filesystem;

// Reads before it asks for the format: what can be decoded counts, not what the header promises.
Result<AudioFormat> decoded_format(AudioStore& audio, const fs::path& file) {
    return audio.read(file, {0, 1}, [](std::span<const float>) { return Result<void>(); }).and_then([&] {
        return audio.format(file);
    });
}

Result<Source> open_source(AudioStore& audio, const fs::path& file) {
    const Result<AudioFormat> format = decoded_format(audio, file);
    if (!format) {
        return tl::unexpected(format.error());
    }
    return Source{fs::absolute(file), "WAVE", format->sample_rate, format->channels, format->frames};
}

// Parts of InsertMedia's mode.
constexpr int place_bits = 3;
constexpr int on_track_number = 512;
constexpr int harmless_bits = 64 + 128; // pitch while matching a tempo; never loop

Track& last_track_or_new(Project& project) {
    return project.tracks().empty() ? project.insert_track(0) : *project.tracks().back();
}

// The track that a mode speaks of, null when there is none of that number.
Track* track_for(Project& project, int mode) {
    if ((mode & place_bits) == 1) {
        return &project.insert_track(project.tracks().size());
    }
    if ((mode & on_track_number) != 0) {
        return project.track(static_cast<unsigned>(mode) >> 16U);
    }
    Track* selected = project.selected_tracks().at(0);
    return selected ? selected : &last_track_or_new(project);
}

Result<Item*> insert_item(Workstation& workstation, const fs::path& file, int mode) {
    Project& project = workstation.project();
    if (const Result<AudioFormat> format = decoded_format(workstation.audio(), file); !format) {
        return tl::unexpected(format.error()); // before a track is made for it
    }
    Track* track = track_for(project, mode);
    if (!track) {
        return tl::unexpected(Failure{file.string() + ": there is no track to put it on"});
    }
    Result<Item*> item = workstation.insert_audio(*track, file, project.cursor_seconds);
    if (!item) {
        return tl::unexpected(item.error());
    }
    project.select_all_items(false);
    (*item)->set_selected(true);
    project.cursor_seconds = (*item)->end_seconds();
    return item;
}

Result<Item*> insert_takes(Workstation& workstation, const fs::path& file) {
    const Result<Source> source = open_source(workstation.audio(), file);
    if (!source) {
        return tl::unexpected(source.error());
    }
    const auto& selected = workstation.project().selected_items();
    for (Item* item : selected.all()) {
        item->add_take(*source, file.filename().string());
    }
    return selected.at(0);
}

Result<Item*> insert_in_mode(Workstation& workstation, const fs::path& file, int mode) {
    const int other_bits = mode & 0xFFFF & ~(place_bits | on_track_number | harmless_bits);
    if (other_bits != 0 || (mode & place_bits) == 2) {
        return tl::unexpected(
            Failure{file.string() + ": insertion mode " + std::to_string(mode) + " is not supported"});
    }
    return (mode & place_bits) == 3 ? insert_takes(workstation, file) : insert_item(workstation, file, mode);
}

int insert_media(Workstation& workstation, const char* name, int mode) {
    const fs::path file = to_string(name);
    const Result<Item*> inserted = insert_in_mode(workstation, file, mode);
    if (!inserted) {
        workstation.report(inserted.error());
    }
    if (workstation.on_insertion) {
        workstation.on_insertion(file, inserted.value_or(nullptr));
    }
    return inserted ? 1 : 0;
}

} // namespace

Result<Item*> Workstation::insert_audio(Track& track, const fs::path& file, double position_seconds) {
    Result<Source> source = open_source(audio(), file);
    if (!source) {
        return tl::unexpected(source.error());
    }
    Item& item = track.add_item(position_seconds, source->length_seconds());
    item.add_take(std::move(*source), file.filename().string());
    return &item;
}

std::span<const HostFunction> insertion_functions() {
    static const HostFunction table[] = {
        host_function<insert_media, "file,mode",
                      "Inserts an audio file at the edit cursor; 1 when it was done">("InsertMedia")};
    return table;
}

} // namespace headless
