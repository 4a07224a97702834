#include "ride/ride.hpp"

#include "api/media/actions.hpp"
#include "api/media/lookup.hpp"
#include "api/media/on_item.hpp"
#include "api/media/peak_levels.hpp"
#include "host_api/host_functions.hpp"
#include "ride/analysis.hpp"
#include "ride/requirements.hpp"
#include "sws/dependency.hpp"

#include <cmath>
#include <memory>
#include <optional>
#include <span>

namespace mk_api::RIDESCRIBER {

sws::EnvAlloc* BR_EnvAlloc = nullptr;
sws::EnvSortPoints* BR_EnvSortPoints = nullptr;
sws::EnvCountPoints* BR_EnvCountPoints = nullptr;
sws::EnvDeletePoint* BR_EnvDeletePoint = nullptr;
sws::EnvFree* BR_EnvFree = nullptr;
sws::EnvGetPoint* BR_EnvGetPoint = nullptr;
sws::EnvSetPoint* BR_EnvSetPoint = nullptr;
sws::EnvGetProperties* BR_EnvGetProperties = nullptr;
sws::EnvSetProperties* BR_EnvSetProperties = nullptr;

namespace {

void bind_functions() {
    using dependency_manager::bind;
    bind(BR_EnvAlloc, "BR_EnvAlloc");
    bind(BR_EnvSortPoints, "BR_EnvSortPoints");
    bind(BR_EnvCountPoints, "BR_EnvCountPoints");
    bind(BR_EnvDeletePoint, "BR_EnvDeletePoint");
    bind(BR_EnvFree, "BR_EnvFree");
    bind(BR_EnvGetPoint, "BR_EnvGetPoint");
    bind(BR_EnvSetPoint, "BR_EnvSetPoint");
    bind(BR_EnvGetProperties, "BR_EnvGetProperties");
    bind(BR_EnvSetProperties, "BR_EnvSetProperties");
}

constexpr int toggle_take_volume_envelope = 40693;
constexpr int new_point = -1;
constexpr double unity = 1.0;

/// An envelope being edited. Changes that are not committed are discarded.
struct Discard {
    void operator()(BR_Envelope* object) const { BR_EnvFree(object, false); }
};
using EnvelopeEdit = std::unique_ptr<BR_Envelope, Discard>;

/// Sets a linear point. The id `new_point` appends one.
void set_point(BR_Envelope* envelope, int id, double position, double value) {
    constexpr int linear = 0;
    BR_EnvSetPoint(envelope, id, position, value, linear, false, 0.0);
}

/// Deletes all points but one, at the take's start and at unity.
void clear(BR_Envelope* envelope) {
    BR_EnvSortPoints(envelope);
    for (int id = BR_EnvCountPoints(envelope); id >= 1; --id)
        BR_EnvDeletePoint(envelope, id);
    set_point(envelope, 0, 0.0, unity);
}

/// Adds one point per window after the point at the start, then writes window i's gain to id i. So the points
/// move down by one, and the last id keeps the last window's position at unity.
void write_points(BR_Envelope* envelope, std::span<const RideWindow> windows, const RideLadder& ladder) {
    for (const RideWindow& window : windows)
        set_point(envelope, new_point, window.position_seconds(), unity);
    int id = 0;
    for (const RideWindow& window : windows) {
        if (const auto value = AssignPointVol(window, ladder).value)
            set_point(envelope, id, window.position_seconds(), *value);
        ++id;
    }
}

/// Writes the ride's points, but for those that can be left out.
void write_ride(BR_Envelope* envelope, const RideScan& scan, int ratio_type) {
    const RideLadder ladder = ComputeRideLadder(scan, ratio_type);
    write_points(envelope, scan.windows, ladder);
    const std::vector<int> flat = CollectFlatPoints(scan.windows, ladder);
    for (auto id = flat.rbegin(); id != flat.rend(); ++id)
        BR_EnvDeletePoint(envelope, *id);
}

struct Point {
    double position = 0.0;
    double value = 0.0;
    double distance_from_unity() const { return std::fabs(unity - value); }
};

Point get_point(BR_Envelope* envelope, int id) {
    Point point;
    int shape = 0;
    bool selected = false;
    double bezier = 0.0;
    BR_EnvGetPoint(envelope, id, &point.position, &point.value, &shape, &selected, &bezier);
    return point;
}

/// If two neighbours are at the same position, keeps the one further from unity, or both if they are equally
/// far. The first point is not compared.
void delete_same_positions(BR_Envelope* envelope) {
    for (int high = BR_EnvCountPoints(envelope) - 1; high >= 2; --high) {
        const int low = high - 1;
        const Point upper = get_point(envelope, high);
        const Point lower = get_point(envelope, low);
        if (upper.position != lower.position)
            continue;
        if (lower.distance_from_unity() > upper.distance_from_unity())
            BR_EnvDeletePoint(envelope, high);
        else if (upper.distance_from_unity() > lower.distance_from_unity())
            BR_EnvDeletePoint(envelope, low);
    }
}

RideScan scan_item(MediaItem* item) {
    std::optional<RideScanner> scanner;
    const auto take = [&](std::span<const mediaItem::PeakLevel> levels, std::size_t total) {
        if (!scanner)
            scanner.emplace(total);
        for (const mediaItem::PeakLevel& level : levels)
            scanner->take(level);
    };
    return mediaItem::visit_peak_levels(item, take) && scanner ? scanner->finish() : RideScan();
}

/// Replaces the points of the take's volume envelope with the ride.
/// @returns false if there is no such envelope
bool write_envelope(MediaItem* item, MediaItem_Take* take, int ratio_type) {
    TrackEnvelope* volume = call(GetTakeEnvelopeByName, take, "Volume");
    EnvelopeEdit envelope(volume ? BR_EnvAlloc(volume, false) : nullptr);
    if (!envelope)
        return false;
    BR_Envelope* object = envelope.get();
    sws::set_in_use(BR_EnvGetProperties, BR_EnvSetProperties, object, true);
    clear(object);
    write_ride(object, scan_item(item), ratio_type);
    delete_same_positions(object);
    BR_EnvFree(envelope.release(), true);
    return true;
}

} // namespace

bool can_ride() {
    try {
        bind_functions();
        return true;
    } catch (const function_unload_exception&) {
        return false;
    }
}

bool SetMediaItemRIDESCRIBER(MediaItem* item, int ratioType) {
    if (!dependency_manager::bound("MK_SetMediaItemRideScriber", bind_functions) || !item)
        return false;
    // With every envelope off, the toggle below can only switch the volume envelope on.
    envelope::SetMediaItemEnvelopeAllOFF(item);
    MediaItem_Take* take = call(GetActiveTake, item);
    if (!take)
        return false;
    ReaProject* project = call(GetItemProjectContext, item);
    std::vector<MediaItem*> selected;
    mediaItem::GetSelectedMediaItems(project, selected);
    call(SelectAllMediaItems, project, false);
    call(SetMediaItemSelected, item, true);
    call(Main_OnCommandEx, toggle_take_volume_envelope, 0, project);
    const bool written = write_envelope(item, take, ratioType);
    call(SetMediaItemSelected, item, false);
    mediaItem::SelectMediaItems(selected, true);
    return written && render::RenderMediaItemActiveTake(item);
}

bool SetMediaIdRIDESCRIBER(ReaProject* projID, int itemID, int ratioType) {
    return mediaItem::on_item(Scope::all, Missing::fails, SetMediaItemRIDESCRIBER, projID, itemID, ratioType);
}

bool SetSelectedMediaIdRIDESCRIBER(ReaProject* projID, int selectItemID, int ratioType) {
    return mediaItem::on_item(Scope::selected, Missing::fails, SetMediaItemRIDESCRIBER, projID, selectItemID,
                              ratioType);
}

int SetMediaItemListRIDESCRIBER(std::vector<MediaItem*> items, int ratioType) {
    try {
        for (MediaItem* item : items)
            SetMediaItemRIDESCRIBER(item, ratioType);
        return 0;
    } catch (...) {
        return 1;
    }
}

} // namespace mk_api::RIDESCRIBER
