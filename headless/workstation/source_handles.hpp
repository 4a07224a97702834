#pragma once
// The audio source objects that plug-ins read file names from, one for each take whose source was requested.

#include "common/plugin_abi.hpp"
#include "headless/project/project.hpp"

#include <memory>
#include <unordered_map>

namespace headless::workstation {

class SourceHandles {
public:
    explicit SourceHandles(const project::LiveObjects& live_objects);
    ~SourceHandles();

    /// The handle stays valid as long as this object exists, even after the take is gone; then it has no file
    /// name.
    PCM_source* handle(project::Take& take);

    /// The source of a handle from outside; null if the handle is null or foreign, or if its take is gone.
    project::Source* live(const PCM_source* handle) const;

private:
    class TakeSource;

    const project::LiveObjects& live_objects_;
    std::unordered_map<const project::Take*, std::unique_ptr<TakeSource>> by_take_;
    std::unordered_map<const PCM_source*, const TakeSource*> by_handle_;
};

} // namespace headless::workstation
