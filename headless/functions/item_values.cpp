// Host functions that read and change the properties and texts of items.

#include "headless/functions/adapter.hpp"
#include "headless/functions/attributes.hpp"
#include "headless/functions/colors.hpp"
#include "headless/functions/tables.hpp"
#include "headless/functions/text_attributes.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace headless::functions {
namespace {

constexpr rpp::FieldPlace color_place{"COLOR", 1};

double number_on_track(const project::Item& item) {
    const auto& items = item.track().items();
    const auto comes_before = [](const project::Item* left, const project::Item* right) {
        return left->comes_before(*right);
    };
    const auto place =
        std::ranges::lower_bound(items, &item, comes_before, &std::unique_ptr<project::Item>::get);
    return static_cast<double>(place - items.begin());
}

double active_take_number(const project::Item& item) {
    const auto& takes = item.takes();
    const auto place = std::ranges::find(takes, item.active_take(), &std::unique_ptr<project::Take>::get);
    return place == takes.end() ? 0.0 : static_cast<double>(place - takes.begin());
}

void set_active_take_number(project::Item& item, double value) {
    if (const project::Take* take = item.take(static_cast<std::size_t>(to_int(value))))
        item.set_active_take(*take);
}

double get_color(const project::Item& item) { return native_color(item, color_place, item.color); }

void set_color(project::Item& item, double value) {
    if (value == get_color(item))
        return;
    item.color = used_color(to_int(value));
    rpp::set_text(item, {color_place.token, 2}, native_byte_order);
}

// An item that is soloed sounds even if it is muted; the others of its track then do not.
constexpr rpp::FieldPlace solo_place{"MUTE", 2};
constexpr double soloed = -1.0;
constexpr double unsoloed = 1.0;

double is_silent(const project::Item& item) {
    const double solo = rpp::number_of(item, solo_place);
    return solo == unsoloed || (solo != soloed && item.mute) ? 1.0 : 0.0;
}

void set_mute(project::Item& item, double value) {
    item.mute = value != 0.0;
    rpp::set_number(item, solo_place, 0.0);
}

// The fields of a fade: shape length automatic-length shape is-crossfade curve curve. The first shape is for
// old readers; older files have no other, and no fields after the third.
enum class Fade { in, out };

template <Fade fade>
constexpr rpp::FieldPlace fade_field(std::size_t word) {
    return {fade == Fade::in ? "FADEIN" : "FADEOUT", word};
}

template <Fade fade>
bool has_fade_field(const project::Item& item, std::size_t word) {
    const chunk::Text* line =
        item.block ? chunk::find_line(item.block->lines, fade_field<fade>(word).token) : nullptr;
    return !line || chunk::word(line->content(), word);
}

template <Fade fade>
double fade_shape(const project::Item& item) {
    return std::trunc(rpp::number_of(item, fade_field<fade>(has_fade_field<fade>(item, 4) ? 4 : 1)));
}

template <Fade fade>
void set_fade_shape(project::Item& item, double value) {
    const double shape = std::clamp(std::trunc(value), 0.0, 6.0);
    if (shape == fade_shape<fade>(item))
        return;
    const bool is_crossfade =
        has_fade_field<fade>(item, 5) && rpp::number_of(item, fade_field<fade>(5)) == 1.0;
    if (has_fade_field<fade>(item, 4))
        rpp::set_number(item, fade_field<fade>(4), shape);
    rpp::set_number(item, fade_field<fade>(1), is_crossfade ? shape + 0.1 : shape);
}

template <Fade fade>
double fade_curve(const project::Item& item) {
    return rpp::number_of(item, fade_field<fade>(6));
}

template <Fade fade>
void set_fade_curve(project::Item& item, double value) {
    const bool are_equal =
        has_fade_field<fade>(item, 7) && rpp::number_of(item, fade_field<fade>(7)) == fade_curve<fade>(item);
    rpp::set_number(item, fade_field<fade>(6), std::clamp(value, -1.0, 1.0));
    if (are_equal)
        rpp::set_number(item, fade_field<fade>(7), std::clamp(value, -1.0, 1.0));
}

// The top and the height of an item in its track, as parts of 1. With fixed lanes they say which lane it is in.
constexpr rpp::FieldPlace top_place{"YPOS", 1};
constexpr rpp::FieldPlace height_place{"YPOS", 2};
constexpr rpp::FieldPlace arrangement_place{"YPOS", 3};
constexpr double in_fixed_lanes = 2.0;

double fixed_lane(const project::Item& item) {
    const double height = rpp::number_of(item, height_place);
    const bool has_lane = rpp::number_of(item, arrangement_place) == in_fixed_lanes && height > 0.0;
    return has_lane ? std::round(rpp::number_of(item, top_place) / height) : 0.0;
}

// Among the lanes that the track has.
void set_fixed_lane(project::Item& item, double value) {
    const double height = rpp::number_of(item, height_place);
    if (rpp::number_of(item, arrangement_place) != in_fixed_lanes || height <= 0.0)
        return;
    const double last = std::max(std::round(1.0 / height) - 1.0, 0.0);
    rpp::set_number(item, top_place, std::clamp(std::trunc(value), 0.0, last) * height);
}

constexpr double item_height_pixels = 64.0;

double nothing(const project::Item&) { return 0.0; }

constexpr Attribute<project::Item> rows[] = {
    {"P_PROJECT", [](const project::Item& item) { return address_of(&item.track().project()); }, nullptr},
    {"P_TRACK", [](const project::Item& item) { return address_of(&item.track()); }, nullptr},
    {"IP_ITEMNUMBER", number_on_track, nullptr},
    {"I_CURTAKE", active_take_number, set_active_take_number},
    {"I_CUSTOMCOLOR", get_color, set_color},
    {"D_POSITION", [](const project::Item& item) { return item.position_seconds(); },
     [](project::Item& item, double value) { item.set_position_seconds(std::max(value, 0.0)); }},
    {"D_LENGTH", [](const project::Item& item) { return item.length_seconds(); },
     [](project::Item& item, double value) { item.set_length_seconds(value); }},
    {"D_SNAPOFFSET", [](const project::Item& item) { return item.snap_offset_seconds; },
     [](project::Item& item, double value) { item.snap_offset_seconds = std::max(value, 0.0); }},
    {"D_VOL", [](const project::Item& item) { return item.volume; },
     [](project::Item& item, double value) { item.volume = value; }},
    {"B_MUTE", is_silent, set_mute},
    {"B_MUTE_ACTUAL", [](const project::Item& item) { return item.mute ? 1.0 : 0.0; },
     [](project::Item& item, double value) { item.mute = value != 0.0; }},
    {"C_MUTE_SOLO", whole_number_at("MUTE", 2, soloed, unsoloed)},
    {"B_ALLTAKESPLAY", [](const project::Item& item) { return item.plays_all_takes ? 1.0 : 0.0; },
     [](project::Item& item, double value) { item.plays_all_takes = value != 0.0; }},
    {"B_LOOPSRC", [](const project::Item& item) { return item.loop ? 1.0 : 0.0; },
     [](project::Item& item, double value) { item.loop = value != 0.0; }},
    {"B_UISEL", [](const project::Item& item) { return item.selected() ? 1.0 : 0.0; },
     [](project::Item& item, double value) { item.set_selected(value != 0.0); }},
    {"D_FADEINLEN", number_at("FADEIN", 2, 0.0)},
    {"D_FADEOUTLEN", number_at("FADEOUT", 2, 0.0)},
    {"D_FADEINLEN_AUTO", number_at("FADEIN", 3, 0.0)},
    {"D_FADEOUTLEN_AUTO", number_at("FADEOUT", 3, 0.0)},
    {"C_FADEINSHAPE", fade_shape<Fade::in>, set_fade_shape<Fade::in>},
    {"C_FADEOUTSHAPE", fade_shape<Fade::out>, set_fade_shape<Fade::out>},
    {"D_FADEINDIR", fade_curve<Fade::in>, set_fade_curve<Fade::in>},
    {"D_FADEOUTDIR", fade_curve<Fade::out>, set_fade_curve<Fade::out>},
    {"I_GROUPID", whole_number_at("GROUP", 1, 0.0)},
    {"C_LOCK", whole_number_at("LOCK", 1, 0.0)},
    {"C_BEATATTACHMODE", [](const project::Item& item) { return static_cast<double>(item.timebase); },
     [](project::Item& item, double value) {
         item.timebase = static_cast<project::Timebase>(to_int(std::clamp(value, -1.0, 2.0)));
     }},
    {"C_AUTOSTRETCH", flag_at("IMPLIEDWARP", 1)},
    {"F_FREEMODE_Y", number_at("YPOS", 1, 0.0, 1.0)},
    {"F_FREEMODE_H", number_at("YPOS", 2, 0.0, 1.0)},
    {"I_FIXEDLANE", fixed_lane, set_fixed_lane},
    {"I_LASTY", nothing, nullptr},
    {"I_LASTH", [](const project::Item&) { return item_height_pixels; }, nullptr},
    // Scripts ask items for these, which are keys of takes or of nothing: the workstation answers 0.
    {"D_END", nothing, nullptr},
    {"D_PLAYRATE", nothing, nullptr},
    {"B_PPITCH", nothing, nullptr},
    {"I_PITCHMODE", nothing, nullptr},
};

constexpr Attributes<project::Item> attributes{"GetMediaItemInfo_Value", "SetMediaItemInfo_Value", rows};

bool set_id(project::Item& item, const std::string& text) {
    const auto id = chunk::guid_of(text);
    if (!id)
        return false;
    rpp::set_text(item, {"IGUID", 1}, chunk::text_of(*id));
    item.id = *id;
    return true;
}

constexpr TextAttribute<project::Item> text_rows[] = {
    {"P_NOTES", [](project::Item& item) { return rpp::notes_of(item); },
     [](project::Item& item, const std::string& text) {
         rpp::set_notes(item, text);
         return true;
     }},
    {"GUID", [](project::Item& item) { return id_text(item, item.track().project()); }, set_id},
};

constexpr TextAttributes<project::Item> texts{"GetSetMediaItemInfo_String", text_rows};

bool set_item_position(Workstation& workstation, project::Item& item, double seconds, bool) {
    return set_value<attributes>(workstation, item, "D_POSITION", seconds);
}

bool set_item_length(Workstation& workstation, project::Item& item, double seconds, bool) {
    return set_value<attributes>(workstation, item, "D_LENGTH", seconds);
}

// Valid until the next call.
const char* get_notes(const project::Item& item) {
    static std::string kept;
    kept = rpp::notes_of(item);
    return kept.c_str();
}

void set_notes(project::Item& item, const char* text) { rpp::set_notes(item, workstation::to_string(text)); }

void get_id(project::Item& item, char* buffer, int size) {
    workstation::copy_text(id_text(item, item.track().project()), buffer, size);
}

project::Item* find_item(const project::Project& project, const char* text) {
    const auto id = chunk::guid_of(workstation::to_string(text));
    if (!id || !*id)
        return nullptr;
    for (const auto& track : project.tracks()) {
        const auto item = std::ranges::find(track->items(), *id, &project::Item::id);
        if (item != track->items().end())
            return item->get();
    }
    return nullptr;
}

int displayed_color(const project::Item& item, const project::Take* take) {
    constexpr rpp::FieldPlace take_place{"TAKECOLOR", 1};
    const int of_take = take ? native_color(*take, take_place, to_int(rpp::number_of(*take, take_place))) : 0;
    const int own = of_take != 0 ? of_take : native_color(item, color_place, item.color);
    return own != 0 ? own : item.track().color;
}

int displayed_item_color(const project::Item& item) { return displayed_color(item, item.active_take()); }

bool get_image(const project::Item& item, char* image, int image_size, int* flags) {
    const std::string file = rpp::text_of(item, {"RESOURCEFN", 1});
    workstation::copy_text(file, image, image_size);
    if (flags)
        *flags = to_int(rpp::number_of(item, {"IMGRESOURCEFLAGS", 1}));
    return !file.empty();
}

void set_image(project::Item& item, const char* image, int flags) {
    rpp::set_text(item, {"RESOURCEFN", 1}, workstation::to_string(image));
    rpp::set_number(item, {"IMGRESOURCEFLAGS", 1}, flags);
}

} // namespace

std::span<const workstation::HostFunction> item_value_functions() {
    static const workstation::HostFunction table[] = {
        {"GetMediaItemInfo_Value",
         host_function<get_value<attributes>>(
             "item,parmname",
             "D_POSITION, D_LENGTH, D_SNAPOFFSET, D_VOL, B_MUTE, B_MUTE_ACTUAL, C_MUTE_SOLO, B_LOOPSRC, "
             "B_ALLTAKESPLAY, B_UISEL, D_FADEINLEN, D_FADEOUTLEN, D_FADEINLEN_AUTO, D_FADEOUTLEN_AUTO, "
             "C_FADEINSHAPE, C_FADEOUTSHAPE, D_FADEINDIR, D_FADEOUTDIR, I_GROUPID, C_LOCK, C_BEATATTACHMODE, "
             "C_AUTOSTRETCH, F_FREEMODE_Y, F_FREEMODE_H, I_FIXEDLANE, I_LASTY, I_LASTH, I_CURTAKE, "
             "I_CUSTOMCOLOR, IP_ITEMNUMBER, P_TRACK or P_PROJECT")},
        {"SetMediaItemInfo_Value",
         host_function<set_value<attributes>>(
             "item,parmname,newvalue", "Sets what GetMediaItemInfo_Value gives, but for the keys with P")},
        {"GetSetMediaItemInfo_String", host_function<get_set_text<texts>, get_set_sized_text<texts>>(
                                           "item,parmname,stringNeedBig,stringNeedBig_sz,setNewValue",
                                           "Gets or sets P_NOTES, GUID, or P_EXT:key, a text of scripts")},
        {"SetMediaItemPosition",
         host_function<set_item_position>("item,position,refreshUI", "Moves the item, to a time in seconds")},
        {"SetMediaItemLength",
         host_function<set_item_length>("item,length,refreshUI", "Sets the item's length in seconds")},
        {"ULT_GetMediaItemNote", host_function<get_notes>("item", "The item's notes, empty if it has none")},
        {"ULT_SetMediaItemNote", host_function<set_notes>("item,note", "Sets the item's notes")},
        {"BR_GetMediaItemGUID",
         host_function<get_id>("item,guidStringOut,guidStringOut_sz", "The item's identifier")},
        {"BR_GetMediaItemByGUID",
         host_function<find_item>("proj,guidStringIn", "The item of that identifier, nil if there is none")},
        {"GetDisplayedMediaItemColor",
         host_function<displayed_item_color>(
             "item", "The colour of the active take, else of the item, else of the track; 0 for none")},
        {"GetDisplayedMediaItemColor2",
         host_function<displayed_color>(
             "item,take", "The colour of the take, else of the item, else of the track; 0 for none")},
        {"BR_GetMediaItemImageResource",
         host_function<get_image>("item,imageOut,imageOut_sz,imageFlagsOut",
                                  "The image that the item shows; false if there is none")},
        {"BR_SetMediaItemImageResource",
         host_function<set_image>("item,imageIn,imageFlags", "Sets the image that the item shows")},
    };
    return table;
}

} // namespace headless::functions
