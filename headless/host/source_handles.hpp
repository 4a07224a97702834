#pragma once
// The audio source objects that plug-ins read file names from, one for each take that was asked for its
// source.

#include "headless/host/plugin_abi.hpp"
#include "headless/project/project.hpp"

#include <memory>
#include <unordered_map>

namespace headless {

class SourceHandles {
public:
    explicit SourceHandles(const LiveObjects& live_objects);
    ~SourceHandles();

    /// Stays valid as long as this lives, also past the take: then it has no file name.
    PCM_source* handle(Take& take);

    /// The source behind a handle from outside; null for a null or foreign one, or when its take is gone.
    const Source* live(const PCM_source* handle) const;

private:
    class TakeSource;

    const LiveObjects& live_objects_;
    std::unordered_map<const Take*, std::unique_ptr<TakeSource>> by_take_;
    std::unordered_map<const PCM_source*, const TakeSource*> by_handle_;
};

} // namespace headless
