#pragma once
// The records that logic functions fill: one row of a track list, one point of a peak analysis, one MIDI
// note, and the tracks of one group of dialogue lines. Copies share their cells, so setting a field in one
// copy sets it in all. Records cannot be moved, because a record always has its cells.

#include "host_api/host_types.hpp"
#include "object/field_cell.hpp"
#include "object/mk_list.hpp"

#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>

namespace mk_object {

/// What a record class has besides its fields: a constructor that leaves every field absent, and the
/// operations of `mk_List`.
#define MK_RECORD(T)                                                                                         \
    T();                                                                                                     \
    T(const T&);                                                                                             \
    T& operator=(const T&) = default;                                                                        \
    ~T();                                                                                                    \
    void pushvalue(lua_State* L) const override;                                                             \
    void set_value_from_luatable(lua_State* L, int index) override;                                          \
    void release_inpool() override;                                                                          \
    std::pair<std::string, std::string> get_key_info(int index) override;                                    \
    unsigned int get_size() override;                                                                        \
    mk_Value get_value(std::string key) override;                                                            \
    void set_value(std::string key, mk_Value value) override;                                                \
    json to_json() override;

/// One row of a track list. `Track` is not read from a Lua table.
class MK_EXPORT TrackDetail : public mk_List {
public:
    MK_RECORD(TrackDetail)

    Cell<std::string> Name;
    Cell<MediaTrack*> Track;
    Cell<double> Volume; ///< dB
    Cell<int> Index;     ///< zero-based position in the project
    Cell<int> Depth;     ///< number of folders that contain the track

    static constexpr std::tuple fields{
        Field{"Name", &TrackDetail::Name}, Field{"Track", &TrackDetail::Track, FromTable::no},
        Field{"Volume", &TrackDetail::Volume}, Field{"Index", &TrackDetail::Index},
        Field{"Depth", &TrackDetail::Depth}};

    static Pool<TrackDetail> pool;
};

/// One point of a peak analysis: the levels of one millisecond.
class MK_EXPORT mk_Peak : public mk_List {
public:
    MK_RECORD(mk_Peak)

    /// Makes a record that refers to six consecutive cells, one of many such groups in a block that `owner`
    /// keeps alive.
    mk_Peak(const std::shared_ptr<void>& owner, mk_LitsItem_inner<double>* cells);

    Cell<double> Time;      ///< seconds from the item's start
    Cell<double> MaxPeak;   ///< dB
    Cell<double> MinPeak;   ///< dB
    Cell<double> Frequency; ///< Hz
    Cell<double> Pos;       ///< position of an envelope point, seconds
    Cell<double> PointVol;  ///< gain of an envelope point, dB

    static constexpr std::tuple fields{
        Field{"Time", &mk_Peak::Time},       Field{"MaxPeak", &mk_Peak::MaxPeak},
        Field{"MinPeak", &mk_Peak::MinPeak}, Field{"Frequency", &mk_Peak::Frequency},
        Field{"Pos", &mk_Peak::Pos},         Field{"PointVol", &mk_Peak::PointVol}};

    static Pool<mk_Peak> pool;
};

/// One MIDI note, created and filled by scripts.
class MK_EXPORT mk_Midi : public mk_List {
public:
    MK_RECORD(mk_Midi)

    Cell<int> Index;
    Cell<int> Pitch;
    Cell<int> Velocity;
    Cell<double> StartPos;
    Cell<double> EndPos;

    static constexpr std::tuple fields{Field{"Index", &mk_Midi::Index}, Field{"Pitch", &mk_Midi::Pitch},
                                       Field{"Velocity", &mk_Midi::Velocity},
                                       Field{"StartPos", &mk_Midi::StartPos},
                                       Field{"EndPos", &mk_Midi::EndPos}};

    static Pool<mk_Midi> pool;
};

/// The tracks of one group of dialogue lines.
class MK_EXPORT LINGOMAT_Tracks : public mk_List {
public:
    MK_RECORD(LINGOMAT_Tracks)

    Cell<std::string> MasterName;
    Cell<MediaTrack*> MasterTrack;
    Cell<MediaTrack*> BaseTrack;
    Cell<MediaTrack*> UniqueTrack;

    /// Maps each subject file in this group to its base file. Scripts do not see it.
    std::map<std::string, std::string> pairs;

    static constexpr std::tuple fields{Field{"MasterName", &LINGOMAT_Tracks::MasterName},
                                       Field{"MasterTrack", &LINGOMAT_Tracks::MasterTrack},
                                       Field{"BaseTrack", &LINGOMAT_Tracks::BaseTrack},
                                       Field{"UniqueTrack", &LINGOMAT_Tracks::UniqueTrack}};

    static Pool<LINGOMAT_Tracks> pool;
};

} // namespace mk_object
