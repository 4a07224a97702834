#include "headless/workstation/source_handles.hpp"

namespace headless::workstation {

// Checks at every call whether the take exists: plug-ins may keep the pointer as long as they like.
class SourceHandles::TakeSource final : public PCM_source {
public:
    TakeSource(project::Take& take, const project::LiveObjects& live_objects)
        : take_(&take), live_objects_(live_objects) {}

    project::Source* source() const { return live_objects_.contains(take_) ? &take_->source : nullptr; }

    PCM_source* Duplicate() override { return nullptr; }
    bool IsAvailable() override { return source() != nullptr; }
    const char* GetType() override { return source() ? source()->type.c_str() : ""; }
    const char* GetFileName() override { return source() ? source()->file.c_str() : nullptr; }
    bool SetFileName(const char*) override { return false; }

private:
    project::Take* take_;
    const project::LiveObjects& live_objects_;
};

SourceHandles::SourceHandles(const project::LiveObjects& live_objects) : live_objects_(live_objects) {}

SourceHandles::~SourceHandles() = default;

PCM_source* SourceHandles::handle(project::Take& take) {
    auto& source = by_take_[&take];
    if (!source) {
        source = std::make_unique<TakeSource>(take, live_objects_);
        by_handle_.emplace(source.get(), source.get());
    }
    return source.get();
}

project::Source* SourceHandles::live(const PCM_source* handle) const {
    const auto found = by_handle_.find(handle);
    return found == by_handle_.end() ? nullptr : found->second->source();
}

} // namespace headless::workstation
