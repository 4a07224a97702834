#pragma once
// The source objects that plug-ins and scripts hold: of takes, of what sections play, and those that were
// made by themselves.

#include "common/plugin_abi.hpp"
#include "headless/project/project.hpp"

#include <memory>
#include <unordered_map>

namespace headless::workstation {

/// A handle stays valid as long as this object exists. Once its source is gone it has no file name, and
/// `live` does not know it.
class SourceHandles {
public:
    explicit SourceHandles(const project::LiveObjects& live_objects);
    ~SourceHandles();

    /// The handle of whatever source the take has at the time.
    PCM_source* handle(project::Take& take);

    /// Keeps a source without a take.
    PCM_source* add(project::Source source);

    /// The handle of what the source plays as a section; null if it is no section, or if the handle is not
    /// live.
    PCM_source* inner_handle(const PCM_source* handle);

    /// Gives the take that source. One without a take moves into it, any other is copied. Handles of the
    /// take's previous source keep that source, which has no take from then on.
    /// @returns false if the handle is not live
    bool set_source(project::Take& take, const PCM_source* handle);

    /// Destroys a source without a take. @returns false, with nothing changed, for any other
    bool destroy(const PCM_source* handle);

    /// The source of a handle from outside; null if the handle is null or foreign, or if its source is gone.
    project::Source* live(const PCM_source* handle) const;

private:
    class Handle;

    Handle* find(const PCM_source* handle) const;
    Handle& make();

    const project::LiveObjects& live_objects_;
    std::unordered_map<const project::Take*, Handle*> by_take_;
    std::unordered_map<const Handle*, Handle*> inner_;
    std::unordered_map<const PCM_source*, std::unique_ptr<Handle>> by_handle_;
};

} // namespace headless::workstation
