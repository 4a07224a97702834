#include "headless/audio/audio_store.hpp"

#include "headless/audio/decoded_file.hpp"

namespace headless {

struct AudioStore::Known {
    DecodedFile file;
    std::list<Known*>::iterator place; // among the resident, if it is
};

AudioStore::AudioStore(std::size_t byte_limit, std::chrono::milliseconds patience)
    : byte_limit_(byte_limit), decoder_(std::make_unique<Decoder>(patience)) {}
AudioStore::~AudioStore() = default;

void AudioStore::set_patience(std::chrono::milliseconds patience) { decoder_->set_patience(patience); }

Result<AudioFormat> AudioStore::format(const std::filesystem::path& file) {
    return find_or_open(file).map([](const Known* known) { return known->file.format(); });
}

Result<void> AudioStore::read(const std::filesystem::path& file, FrameRange range,
                              const FrameVisitor& visit) {
    return find_or_open(file).and_then(
        [&](Known* known) { return load(*known).and_then([&] { return known->file.read(range, visit); }); });
}

Result<AudioStore::Known*> AudioStore::find_or_open(const std::filesystem::path& file) {
    if (asked_last_ && asked_last_->file.path() != file) {
        asked_last_->file.close(); // one open file at most, however many are asked about
    }
    const auto stamp = stamp_of(file);
    if (const auto known = by_path_.find(file.native()); known != by_path_.end()) {
        if (stamp && known->second->file.stamp() == *stamp) {
            asked_last_ = known->second.get();
            if (asked_last_->file.is_resident()) {
                resident_.splice(resident_.begin(), resident_, asked_last_->place);
            }
            return asked_last_;
        }
        forget(known);
    }
    if (!stamp) {
        return tl::unexpected(stamp.error());
    }
    return DecodedFile::open(file, *stamp, *decoder_).map([&](DecodedFile&& opened) {
        auto known = std::make_unique<Known>(Known{std::move(opened), {}});
        asked_last_ = known.get();
        by_path_.emplace(file.native(), std::move(known));
        return asked_last_;
    });
}

Result<void> AudioStore::load(Known& known) {
    if (known.file.is_resident() || known.file.bytes() > byte_limit_) {
        return {};
    }
    make_room(known.file.bytes());
    return known.file.load().map([&] {
        resident_bytes_ += known.file.bytes();
        resident_.push_front(&known);
        known.place = resident_.begin();
    });
}

void AudioStore::make_room(std::size_t bytes) {
    while (!resident_.empty() && resident_bytes_ > byte_limit_ - bytes) {
        DecodedFile& oldest = resident_.back()->file;
        resident_bytes_ -= oldest.bytes();
        oldest.unload();
        resident_.pop_back();
    }
}

void AudioStore::forget(KnownFiles::iterator known) {
    if (known->second->file.is_resident()) {
        resident_bytes_ -= known->second->file.bytes();
        resident_.erase(known->second->place);
    }
    if (asked_last_ == known->second.get()) {
        asked_last_ = nullptr;
    }
    by_path_.erase(known);
}

} // namespace headless
