#include "headless/audio/audio_cache.hpp"

#include "headless/audio/decoded_file.hpp"

namespace headless::audio {

struct AudioCache::CachedFile {
    DecodedFile file;
    std::list<CachedFile*>::iterator position; // in the list by recency, if resident
};

AudioCache::AudioCache(std::size_t byte_limit, std::chrono::milliseconds timeout)
    : byte_limit_(byte_limit), decoder_(std::make_unique<Decoder>(timeout)) {}
AudioCache::~AudioCache() = default;

void AudioCache::set_timeout(std::chrono::milliseconds timeout) { decoder_->set_timeout(timeout); }

Result<AudioFormat> AudioCache::format(const std::filesystem::path& file) {
    return find_or_open(file).map([](const CachedFile* cached) { return cached->file.format(); });
}

std::optional<Truncation> AudioCache::truncation(const std::filesystem::path& file) {
    const auto cached = find_or_open(file);
    return cached ? (*cached)->file.truncation() : std::nullopt;
}

Result<Metadata> AudioCache::metadata(const std::filesystem::path& file) {
    return stamp_of(file)
        .and_then([&](const FileStamp&) { return decoder_->open(file); })
        .map([](const SoundFile& sound) { return metadata_of(sound.handle(), sound.info); });
}

Result<void> AudioCache::read(const std::filesystem::path& file, FrameRange range,
                              const FrameVisitor& visit) {
    const auto visit_unless_interrupted = [&](std::span<const float> block) -> Result<void> {
        if (is_interrupted && is_interrupted())
            return tl::unexpected(path_failure(file, "interrupted", FailureKind::interrupted));
        return visit(block);
    };
    return find_or_open(file).and_then([&](CachedFile* cached) {
        return load(*cached).and_then([&] { return cached->file.read(range, visit_unless_interrupted); });
    });
}

Result<AudioCache::CachedFile*> AudioCache::find_or_open(const std::filesystem::path& file) {
    if (last_used_ && last_used_->file.path() != file)
        last_used_->file.close(); // at most one file stays open
    const auto stamp = stamp_of(file);
    if (const auto cached = by_path_.find(file.native()); cached != by_path_.end()) {
        if (stamp && cached->second->file.stamp() == *stamp) {
            last_used_ = cached->second.get();
            if (last_used_->file.is_resident())
                by_recency_.splice(by_recency_.begin(), by_recency_, last_used_->position);
            return last_used_;
        }
        erase(cached);
    }
    if (!stamp)
        return tl::unexpected(stamp.error());
    return DecodedFile::open(file, *stamp, *decoder_).map([&](DecodedFile&& opened) {
        auto cached = std::make_unique<CachedFile>(CachedFile{std::move(opened), {}});
        CachedFile* const added = cached.get();
        by_path_.emplace(file.native(), std::move(cached));
        last_used_ = added; // last, as memory may run out above
        return added;
    });
}

Result<void> AudioCache::load(CachedFile& cached) {
    if (cached.file.is_resident() || cached.file.bytes() > byte_limit_)
        return {};
    evict_until_free(cached.file.bytes());
    std::list<CachedFile*> position{&cached}; // allocated first: every resident file has one
    return cached.file.load().map([&] {
        resident_bytes_ += cached.file.bytes();
        by_recency_.splice(by_recency_.begin(), position);
        cached.position = by_recency_.begin();
    });
}

void AudioCache::evict_until_free(std::size_t bytes) {
    while (!by_recency_.empty() && resident_bytes_ > byte_limit_ - bytes) {
        DecodedFile& oldest = by_recency_.back()->file;
        resident_bytes_ -= oldest.bytes();
        oldest.unload();
        by_recency_.pop_back();
    }
}

void AudioCache::erase(FilesByPath::iterator cached) {
    if (cached->second->file.is_resident()) {
        resident_bytes_ -= cached->second->file.bytes();
        by_recency_.erase(cached->second->position);
    }
    if (last_used_ == cached->second.get())
        last_used_ = nullptr;
    by_path_.erase(cached);
}

} // namespace headless::audio
