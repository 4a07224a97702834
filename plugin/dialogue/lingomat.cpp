#include "dialogue/lingomat.hpp"

#include "api/project/cursor.hpp"
#include "dialogue/lines.hpp"
#include "dialogue/placement.hpp"
#include "dialogue/track_groups.hpp"

namespace mk_api::LINGOMAT {
namespace {

double start_position(double seconds, int start_end_type) {
    constexpr int from_end = 1;
    if (start_end_type == from_end)
        cursol::SetPlayCursorPosition(nullptr, from_end, seconds, &seconds);
    return seconds;
}

} // namespace

int LINGOMAT_InsertMediaItems(std::string subjectLangPath, std::string baseLangPath, double startPos,
                              double mediaInterval, int startEndType, bool isVolMatch, bool isRIDESCRIBER,
                              int RIDESCRIBER_ratioType, const std::vector<std::string>& trackNameList,
                              std::vector<std::string>& unmatchedPathListOut) {
    const std::vector<Line> subjects = read_lines(subjectLangPath);
    const LinesByName bases(read_lines(baseLangPath));
    const double start = start_position(startPos, startEndType);
    TrackGroups groups;
    for (const Line& subject : subjects) {
        mk_object::LINGOMAT_Tracks& group = groups.find_or_make(master_name(subject.name, trackNameList));
        if (const Line* base = bases.find(subject.name))
            group.pairs.emplace(subject.path, base->path);
        else
            unmatchedPathListOut.push_back(subject.path);
    }
    PairPlacer placer(start, {mediaInterval, isVolMatch, isRIDESCRIBER, RIDESCRIBER_ratioType});
    for (const auto& group : groups.in_order_of_use())
        placer.place(*group);
    return 0;
}

} // namespace mk_api::LINGOMAT
