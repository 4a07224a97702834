#pragma once
// The tracks of the groups of lines: for each a track at the top, by the group's name, with the children
// "base" and "unique". Tracks of those names that the project has are taken over.

#include "object/records.hpp"

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace mk_api::LINGOMAT {

class TrackGroups {
public:
    /// The group of that name; at its first use its tracks are found or made in the current project.
    mk_object::LINGOMAT_Tracks& find_or_make(const std::string& master_name);

    const std::vector<std::shared_ptr<mk_object::LINGOMAT_Tracks>>& in_order_of_use() const {
        return groups_;
    }

private:
    std::vector<std::shared_ptr<mk_object::LINGOMAT_Tracks>> groups_;
    std::unordered_map<std::string, mk_object::LINGOMAT_Tracks*> by_name_;
};

} // namespace mk_api::LINGOMAT
