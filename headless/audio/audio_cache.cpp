#include "headless/audio/audio_cache.hpp"

#include "headless/audio/decoded_file.hpp"

namespace headless::audio {

struct AudioCache::Known {
    DecodedFile file;
    std::list<Known*>::iterator place; // in the list of resident files, if resident
};

AudioCache::AudioCache(std::size_t byte_limit, std::chrono::milliseconds patience)
    : byte_limit_(byte_limit), decoder_(std::make_unique<Decoder>(patience)) {}
AudioCache::~AudioCache() = default;

void AudioCache::set_patience(std::chrono::milliseconds patience) { decoder_->set_patience(patience); }

Result<AudioFormat> AudioCache::format(const std::filesystem::path& file) {
    return find_or_open(file).map([](const Known* known) { return known->file.format(); });
}

std::optional<Shortfall> AudioCache::shortfall(const std::filesystem::path& file) {
    const auto known = find_or_open(file);
    return known ? (*known)->file.shortfall() : std::nullopt;
}

Result<void> AudioCache::read(const std::filesystem::path& file, FrameRange range,
                              const FrameVisitor& visit) {
    const auto visit_unless_interrupted = [&](std::span<const float> block) -> Result<void> {
        if (is_interrupted && is_interrupted())
            return tl::unexpected(Failure{file.string() + ": interrupted"});
        return visit(block);
    };
    return find_or_open(file).and_then([&](Known* known) {
        return load(*known).and_then([&] { return known->file.read(range, visit_unless_interrupted); });
    });
}

Result<AudioCache::Known*> AudioCache::find_or_open(const std::filesystem::path& file) {
    if (asked_last_ && asked_last_->file.path() != file)
        asked_last_->file.close(); // at most one file stays open
    const auto stamp = stamp_of(file);
    if (const auto known = by_path_.find(file.native()); known != by_path_.end()) {
        if (stamp && known->second->file.stamp() == *stamp) {
            asked_last_ = known->second.get();
            if (asked_last_->file.is_resident())
                resident_.splice(resident_.begin(), resident_, asked_last_->place);
            return asked_last_;
        }
        forget(known);
    }
    if (!stamp)
        return tl::unexpected(stamp.error());
    return DecodedFile::open(file, *stamp, *decoder_).map([&](DecodedFile&& opened) {
        auto known = std::make_unique<Known>(Known{std::move(opened), {}});
        Known* const added = known.get();
        by_path_.emplace(file.native(), std::move(known));
        asked_last_ = added; // only now, as memory may run out above
        return added;
    });
}

Result<void> AudioCache::load(Known& known) {
    if (known.file.is_resident() || known.file.bytes() > byte_limit_)
        return {};
    make_room(known.file.bytes());
    std::list<Known*> place{&known}; // made first: a resident file must have one
    return known.file.load().map([&] {
        resident_bytes_ += known.file.bytes();
        resident_.splice(resident_.begin(), place);
        known.place = resident_.begin();
    });
}

void AudioCache::make_room(std::size_t bytes) {
    while (!resident_.empty() && resident_bytes_ > byte_limit_ - bytes) {
        DecodedFile& oldest = resident_.back()->file;
        resident_bytes_ -= oldest.bytes();
        oldest.unload();
        resident_.pop_back();
    }
}

void AudioCache::forget(KnownFiles::iterator known) {
    if (known->second->file.is_resident()) {
        resident_bytes_ -= known->second->file.bytes();
        resident_.erase(known->second->place);
    }
    if (asked_last_ == known->second.get())
        asked_last_ = nullptr;
    by_path_.erase(known);
}

} // namespace headless::audio
