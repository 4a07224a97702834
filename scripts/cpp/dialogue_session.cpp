// A session of a dialogue editor in C++: imports two folders of recorded lines, mutes the reference, renders
// one line, rides another, and saves the project.
//
//     dialogue_session SUBJECT BASE PROJECT.rpp

#include "api/media/actions.hpp"
#include "api/media/lookup.hpp"
#include "api/media/loudness.hpp"
#include "api/media/metadata.hpp"
#include "api/media/peaks.hpp"
#include "api/project/cursor.hpp"
#include "api/project/dialogs.hpp"
#include "api/project/files.hpp"
#include "api/project/regions.hpp"
#include "api/project/strings.hpp"
#include "api/track/lists.hpp"
#include "api/track/state.hpp"
#include "api/track/tree.hpp"
#include "api/track/volume_name.hpp"
#include "dialogue/lingomat.hpp"
#include "entry/api_table.hpp"
#include "headless/capi/capi.hpp"
#include "host_api/host_functions.hpp"
#include "object/json_text.hpp"
#include "object/records.hpp"
#include "ride/ride.hpp"
#include "utility/mk_utility.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace {

using mk_object::mk_List;

constexpr ReaProject* current = nullptr; // a null project is the current one

/// The library's data is the program's own: what the workstation has bound, and the functions registered with
/// it.
void show_library() {
    char version[16];
    get_version(version, sizeof version);
    std::printf("library %s, %s, %zu functions for scripts\n", version,
                imported && reaper_plugin ? "bound" : "not bound", api_define_list.count);
}

/// A host function that the program substitutes for the workstation's. The library calls this one.
int show_on_terminal(const char* text, const char* title, int) {
    std::printf("[%s] %s\n", title, text);
    return 1; // OK
}

void import(const char* subject, const char* base) {
    std::vector<std::string> files, unmatched;
    mk_api::path::GetFilePathList(subject, "wav", files);
    mk_api::LINGOMAT::LINGOMAT_InsertMediaItems(subject, base, 0.0, 1.0, 0, true, false, 0, {"door"},
                                                unmatched);
    int lines = 0, wav_lines = 0;
    mk_api::mediaItem::GetMediaTypeCount(current, "WAV", &lines, &wav_lines);
    std::printf("%zu files, %d items, %zu lines without a partner\n", files.size(), wav_lines,
                unmatched.size());

    int button = 0;
    const std::string text = mk_utility::format("Imported %s.", subject);
    ShowMessageBox = show_on_terminal;
    mk_api::UI::ShowMessageBox_Ex(text.c_str(), "Session", 0, &button);
}

/// Colours the groups' tracks, and mutes the recordings that serve only as reference.
void arrange_tracks() {
    std::vector<mk_object::TrackDetail> tracks;
    mk_api::track::GetTrackListDetail(current, tracks);
    for (const mk_object::TrackDetail& track : tracks) {
        int depth = 0;
        bool is_muted = false, is_reference = false;
        double volume_db = 0.0;
        mk_api::track::GetTrackItemDepth(track.Track->value, &depth);
        MK_FELSPAR::CheckSameString(track.Name->value.c_str(), "BASE", &is_reference);
        MK_FELSPAR::SetTrackItemColor(track.Track->value, depth == 0 ? 0x40A0FF : 0x808080);
        MK_FELSPAR::SetTrackItemMute(track.Track->value, is_reference);
        MK_FELSPAR::SetTrackItemVolume(track.Track->value, -6.0);
        MK_FELSPAR::GetTrackItemMute(track.Track->value, &is_muted);
        MK_FELSPAR::GetTrackItemVolume(track.Track->value, &volume_db);
        std::printf("%*strack %d \"%s\"%s, %.1f dB\n", 2 * depth, "", track.Index->value,
                    track.Name->value.c_str(), is_muted ? ", muted" : "", volume_db);
    }
}

/// Returns whether the extension's functions were found. The operations on loudness and envelopes have looked
/// them up, and have shown a message if one is missing.
bool has_extension() {
    return mk_api::loudness::NF_AnalyzeTakeLoudness2 && mk_api::RIDESCRIBER::BR_EnvAlloc &&
           mk_api::envelope::BR_EnvAlloc;
}

/// Returns the loudness of the loudest 0.4 s of an item.
double loudest_lufs(MediaItem* item) {
    double lufs = 0.0, at_seconds = 0.0;
    const bool is_read = mk_api::loudness::GetMediaItemLoudnessMaxMomentary(item, &lufs, &at_seconds) == 0;
    return is_read ? mk_utility::round(lufs, 1) : -HUGE_VAL;
}

/// Shows the levels of an item, rides it, and keeps only the ridden take.
void ride(MediaItem* item) {
    constexpr int crop_to_active_take = 40131;
    double length_seconds = 0.0;
    mk_api::mediaItem::GetMediaItemLength(item, &length_seconds);
    std::vector<mk_object::mk_Peak> peaks;
    MK_FELSPAR::GetMediaItemPeakList(item, peaks);
    const auto highest =
        std::ranges::max_element(peaks, {}, [](const auto& peak) { return peak.MaxPeak->value; });
    std::printf("%s: %.2f s, %zu levels, highest %.1f dB\n",
                mk_api::mediaItem::GetSourceName(item, 0, true).c_str(), length_seconds, peaks.size(),
                highest == peaks.end() ? -80.0 : highest->MaxPeak->value);

    std::printf("momentary maximum %.1f LUFS", loudest_lufs(item));
    const bool is_ridden = mk_api::RIDESCRIBER::SetMediaItemRIDESCRIBER(item, 0);
    mk_api::action::ActionMediaItemSelectKeep(item, crop_to_active_take);
    std::printf(", %s %.1f LUFS in %d take\n", is_ridden ? "ridden" : "not ridden", loudest_lufs(item),
                call(CountTakes, item)); // a host function, called directly
    std::printf("functions of the extension %s\n", has_extension() ? "found" : "missing");
}

/// Renders an item without its envelopes.
void flatten(MediaItem* item) {
    mk_api::envelope::SetMediaItemEnvelopeAllOFF(item);
    const bool is_rendered = mk_api::render::RenderMediaItemActiveTake(item);
    char name[256] = "";
    mk_api::mediaItem::GetMediaItemName(item, name, sizeof name);
    std::printf("%s %s\n", name, is_rendered ? "rendered" : "not rendered");
}

/// Adds a region over the whole project, and moves the cursor to its start.
void mark_project() {
    double end_seconds = 0.0, position_seconds = -1.0;
    int number = 0;
    const int items = call(CountMediaItems, current);
    mk_api::mediaItem::GetMediaItemEndTime(mk_api::mediaItem::GetMediaItemSelect(current, items - 1, 0),
                                           &end_seconds);
    MK_FELSPAR::AddRegionMarker(current, 0.0, end_seconds, "session", -1, 0, &number);
    mk_api::cursol::SetPlayCursorPosition(current, 0, 0.0, &position_seconds);
    std::printf("region %d to %.2f s, cursor at %.1f s\n", number, end_seconds, position_seconds);
}

/// A record class of the program's own, which may be in an array with the library's.
struct Remark : mk_List {
    explicit Remark(std::string words) : text(std::move(words)) {}
    void pushvalue(lua_State*) const override {} // no script sees it
    void set_value_from_luatable(lua_State*, int) override {}
    unsigned int get_size() override { return 1; }
    mk_object::mk_Value get_value(std::string) override { return text; }
    void release_inpool() override { std::printf("released: %s\n", text.c_str()); }
    std::string text;
};

/// Puts records into pools, where a script in another language finds them by their handles.
void keep_records() {
    Remark remark("door_1 again, too close");
    const unsigned long long handle = mk_List::create_mklist_array();
    mk_List* note = mk_List::create_mkobj_inarray<mk_object::mk_Midi>(handle);
    note->set_value("Pitch", 60);
    std::vector<mk_List*>& array = *mk_List::mkList_pool.at(handle);
    array.push_back(&remark);
    std::printf("%zu records, %zu in the pool of notes\n", array.size(), mk_object::mk_Midi::pool.size());
    mk_List::release_mkList(handle);
    std::printf("%zu in the pool of notes\n", mk_object::mk_Midi::pool.size());
}

/// Shows the parts of a path as JSON. Copies share their cells.
void show_path(const char* file) {
    const mk_object::mk_Path path(file);
    mk_object::mk_Path copy = path;
    std::string text;
    mk_api::string::Json_Serialize(copy.to_json()["Type"], text);
    std::printf("%s.%s %s\n", path.FileNameWithoutExtension->value.c_str(), path.Extension->value.c_str(),
                text.c_str());
}

bool run(const char* subject, const char* base, const char* project_file) {
    if (!felspar_open(PLUGIN_FILE, nullptr))
        return false;
    show_library();
    import(subject, base);
    arrange_tracks();
    flatten(mk_api::mediaItem::GetMediaItemSelect(current, 0, 0));
    ride(mk_api::mediaItem::GetMediaItemSelect(current, 1, 0));
    mark_project();
    keep_records();
    const bool is_saved = felspar_save(project_file);
    if (is_saved)
        show_path(project_file);
    return is_saved;
}

} // namespace

int main(int count, char** arguments) {
    if (count != 4) {
        std::fprintf(stderr, "usage: dialogue_session SUBJECT BASE PROJECT.rpp\n");
        return 2;
    }
    bool is_done = false;
    try {
        is_done = run(arguments[1], arguments[2], arguments[3]);
    } catch (const std::exception& error) { // a folder that cannot be read, memory
        std::fprintf(stderr, "%s\n", error.what());
    }
    while (const char* failure = felspar_next_failure()) {
        std::fprintf(stderr, "%s\n", failure);
        is_done = false;
    }
    felspar_close();
    return is_done ? 0 : 1;
}
