#pragma once
// The records that logic functions fill: one row of a track list, one point of a peak analysis, one MIDI
// note, and the tracks of one group of dialogue lines. Copies share their cells.

#include "object/record.hpp"

namespace mk_object {

/// One row of a track list. `Track` is not read from a Lua table.
class MK_EXPORT TrackDetail final : public Record<TrackDetail> {
public:
    TrackDetail() { make_cells(); }

    Cell<std::string> Name;
    Cell<MediaTrack*> Track;
    Cell<double> Volume; ///< dB
    Cell<int> Index;     ///< zero-based position in the project
    Cell<int> Depth;     ///< folders around the track

    static constexpr std::tuple fields{
        Field{"Name", &TrackDetail::Name}, Field{"Track", &TrackDetail::Track, FromTable::no},
        Field{"Volume", &TrackDetail::Volume}, Field{"Index", &TrackDetail::Index},
        Field{"Depth", &TrackDetail::Depth}};

    static Pool<TrackDetail> pool;
};

/// One point of a peak analysis: the levels of one millisecond.
class MK_EXPORT mk_Peak final : public Record<mk_Peak> {
public:
    mk_Peak() { make_cells(); }

    /// A record on cells that `owner` keeps alive, as one of many in a block.
    template <class Owner, class Block>
    mk_Peak(const std::shared_ptr<Owner>& owner, Block& cells) {
        use_cells(owner, cells);
    }

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

/// One MIDI note; scripts make and fill it.
class MK_EXPORT mk_Midi final : public Record<mk_Midi> {
public:
    mk_Midi() { make_cells(); }

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
class MK_EXPORT LINGOMAT_Tracks final : public Record<LINGOMAT_Tracks> {
public:
    LINGOMAT_Tracks() { make_cells(); }

    Cell<std::string> MasterName;
    Cell<MediaTrack*> MasterTrack;
    Cell<MediaTrack*> BaseTrack;
    Cell<MediaTrack*> UniqueTrack;

    /// Subject file to base file, of the pairs in this group; no script sees it.
    std::map<std::string, std::string> pairs;

    static constexpr std::tuple fields{Field{"MasterName", &LINGOMAT_Tracks::MasterName},
                                       Field{"MasterTrack", &LINGOMAT_Tracks::MasterTrack},
                                       Field{"BaseTrack", &LINGOMAT_Tracks::BaseTrack},
                                       Field{"UniqueTrack", &LINGOMAT_Tracks::UniqueTrack}};

    static Pool<LINGOMAT_Tracks> pool;
};

} // namespace mk_object
