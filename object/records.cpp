#include "object/records.hpp"

namespace mk_object {

Pool<TrackDetail> TrackDetail::pool;
Pool<mk_Peak> mk_Peak::pool;
Pool<mk_Midi> mk_Midi::pool;
Pool<LINGOMAT_Tracks> LINGOMAT_Tracks::pool;

} // namespace mk_object
