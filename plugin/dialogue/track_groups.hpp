#pragma once
// The tracks of the groups of lines. Each group has a top-level track with the group's name, with the
// children "base" and "unique". Existing tracks with those names are reused.

#include "object/records.hpp"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace mk_api::LINGOMAT {

class TrackGroups {
public:
    /// Returns the group with that name. The first call finds its tracks in the current project or creates
    /// them.
    mk_object::LINGOMAT_Tracks& find_or_make(const std::string& master_name);

    const std::vector<std::shared_ptr<mk_object::LINGOMAT_Tracks>>& in_order_of_use() const {
        return groups_;
    }

private:
    std::vector<std::shared_ptr<mk_object::LINGOMAT_Tracks>> groups_;
    std::unordered_map<std::string, mk_object::LINGOMAT_Tracks*> by_name_;
};

} // namespace mk_api::LINGOMAT
