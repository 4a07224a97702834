// Host functions that insert audio files as items.

#include "common/path_text.hpp"
#include "headless/functions/adapter.hpp"
#include "headless/functions/tables.hpp"
#include "headless/workstation/audio_source.hpp"
#include "headless/workstation/take_audio.hpp"
#include "headless/workstation/text.hpp"

#include <string>
#include <vector>

namespace headless::functions {
namespace {

namespace fs = std::filesystem;

// Bits of InsertMedia's mode.
constexpr int place_bits = 3;
constexpr int on_track_number = 512;
constexpr int harmless_bits = 64 + 128; // pitch while matching a tempo; never loop

project::Track& last_track_or_new(project::Project& project) {
    return project.tracks().empty() ? project.insert_track(0) : *project.tracks().back();
}

// The track that a mode refers to, null if there is no track of that number.
project::Track* track_for(project::Project& project, int mode) {
    if ((mode & place_bits) == 1)
        return &project.insert_track(project.tracks().size());
    if ((mode & on_track_number) != 0)
        return project.track(static_cast<unsigned>(mode) >> 16U);
    project::Track* selected = project.selected_tracks().at(0);
    return selected ? selected : &last_track_or_new(project);
}

Result<project::Item*> insert_item(Workstation& workstation, const fs::path& file, int mode) {
    project::Project& project = workstation.project();
    if (const Result<audio::AudioFormat> format = workstation::decoded_format(workstation.audio(), file);
        !format)
        return tl::unexpected(format.error()); // before a track is created for it
    project::Track* track = track_for(project, mode);
    if (!track)
        return tl::unexpected(path_failure(file, "there is no track to put it on"));
    Result<project::Item*> item = workstation.insert_audio(*track, file, project.cursor_seconds);
    if (!item)
        return tl::unexpected(item.error());
    project.select_all_items(false);
    (*item)->set_selected(true);
    project.cursor_seconds = (*item)->end_seconds();
    return item;
}

Result<project::Item*> insert_takes(Workstation& workstation, const fs::path& file) {
    const Result<project::Source> source = workstation::open_source(workstation.audio(), file);
    if (!source)
        return tl::unexpected(source.error());
    const auto& selected = workstation.project().selected_items();
    for (project::Item* item : selected.all())
        item->add_take(*source, file.filename().string());
    return selected.at(0);
}

Result<project::Item*> insert_in_mode(Workstation& workstation, const fs::path& file, int mode) {
    if (const auto& is_interrupted = workstation.audio().is_interrupted; is_interrupted && is_interrupted())
        return tl::unexpected( // without opening the file, as thousands may follow
            path_failure(file, "interrupted", FailureKind::interrupted));
    const int other_bits = mode & 0xFFFF & ~(place_bits | on_track_number | harmless_bits);
    if (other_bits != 0 || (mode & place_bits) == 2) {
        return tl::unexpected(
            path_failure(file, "insertion mode " + std::to_string(mode) + " is not supported"));
    }
    return (mode & place_bits) == 3 ? insert_takes(workstation, file) : insert_item(workstation, file, mode);
}

int insert_media(Workstation& workstation, const char* name, int mode) {
    const fs::path file = path_text::path_of(workstation::to_string(name));
    const Result<project::Item*> inserted = insert_in_mode(workstation, file, mode);
    if (!inserted)
        workstation.report(inserted.error());
    if (workstation.on_insertion)
        workstation.on_insertion(file, inserted.value_or(nullptr));
    return inserted ? 1 : 0;
}

} // namespace

std::span<const workstation::HostFunction> insertion_functions() {
    static const workstation::HostFunction table[] = {
        {"InsertMedia", host_function<insert_media>(
                            "file,mode", "Inserts an audio file at the edit cursor; 1 when it was done")}};
    return table;
}

} // namespace headless::functions
