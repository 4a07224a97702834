#include "headless/workstation/source_handles.hpp"

#include <string>
#include <utility>

namespace headless::workstation {

// Checks at every call whether the source exists: plug-ins may keep the pointer as long as they like.
class SourceHandles::Handle final : public PCM_source {
public:
    explicit Handle(SourceHandles& handles) : handles_(handles) {}

    project::Take* take = nullptr;        ///< whose source it is
    const Handle* outer = nullptr;        ///< of the section that plays it
    std::unique_ptr<project::Source> own; ///< without a take

    project::Source* source() const {
        if (take)
            return handles_.live_objects_.contains(take) ? &take->source : nullptr;
        if (project::Source* section = outer ? outer->source() : nullptr)
            return section->inner.get();
        return own.get();
    }

    PCM_source* Duplicate() override { return source() ? handles_.add(*source()) : nullptr; }
    bool IsAvailable() override { return source() && !source()->offline; }
    void SetAvailable(bool is_available) override {
        if (source())
            source()->offline = !is_available;
    }
    const char* GetType() override { return source() ? source()->type.c_str() : ""; }
    const char* GetFileName() override {
        if (!source())
            return nullptr;
        file_name_ = source()->file.string();
        return file_name_.c_str();
    }
    bool SetFileName(const char*) override { return false; }

private:
    SourceHandles& handles_;
    std::string file_name_; ///< kept for callers
};

SourceHandles::SourceHandles(const project::LiveObjects& live_objects) : live_objects_(live_objects) {}

SourceHandles::~SourceHandles() = default;

SourceHandles::Handle& SourceHandles::make() {
    auto handle = std::make_unique<Handle>(*this);
    Handle& made = *handle;
    by_handle_.emplace(&made, std::move(handle));
    return made;
}

SourceHandles::Handle* SourceHandles::find(const PCM_source* handle) const {
    const auto found = by_handle_.find(handle);
    return found == by_handle_.end() ? nullptr : found->second.get();
}

PCM_source* SourceHandles::handle(project::Take& take) {
    Handle*& handle = by_take_[&take];
    if (!handle) {
        handle = &make();
        handle->take = &take;
    }
    return handle;
}

PCM_source* SourceHandles::add(project::Source source) {
    auto own = std::make_unique<project::Source>(std::move(source));
    Handle& handle = make();
    handle.own = std::move(own);
    return &handle;
}

PCM_source* SourceHandles::inner_handle(const PCM_source* handle) {
    const Handle* outer = find(handle);
    if (!outer || !outer->source() || !outer->source()->inner)
        return nullptr;
    Handle*& inner = inner_[outer];
    if (!inner) {
        inner = &make();
        inner->outer = outer;
    }
    return inner;
}

bool SourceHandles::set_source(project::Take& take, const PCM_source* wanted) {
    Handle* handle = find(wanted);
    if (!handle || !handle->source())
        return false;
    if (handle->source() == &take.source)
        return true;
    project::Source source = *handle->source();
    Handle*& present = by_take_[&take];
    if (present) {
        present->own = std::make_unique<project::Source>(std::move(take.source));
        present->take = nullptr;
    }
    take.source = std::move(source);
    present = nullptr;
    if (handle->own) {
        handle->own.reset();
        handle->take = &take;
        present = handle;
    }
    return true;
}

bool SourceHandles::destroy(const PCM_source* wanted) {
    Handle* handle = find(wanted);
    if (!handle || !handle->own)
        return false;
    handle->own.reset();
    return true;
}

project::Source* SourceHandles::live(const PCM_source* handle) const {
    const Handle* found = find(handle);
    return found ? found->source() : nullptr;
}

} // namespace headless::workstation
