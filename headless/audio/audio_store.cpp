#include "headless/audio/audio_store.hpp"

#include "headless/audio/decoded_file.hpp"

namespace headless {

AudioStore::AudioStore(std::size_t byte_limit, std::chrono::milliseconds patience)
    : byte_limit_(byte_limit), decoder_(std::make_unique<Decoder>(patience)) {}
AudioStore::~AudioStore() = default;

void AudioStore::set_patience(std::chrono::milliseconds patience) { decoder_->set_patience(patience); }

Result<AudioFormat> AudioStore::format(const std::filesystem::path& file) {
    return find_or_open(file).map([](const DecodedFile* found) { return found->format(); });
}

Result<void> AudioStore::read(const std::filesystem::path& file, FrameRange range,
                              const FrameVisitor& visit) {
    return find_or_open(file).and_then(
        [&](DecodedFile* found) { return load(*found).and_then([&] { return found->read(range, visit); }); });
}

Result<DecodedFile*> AudioStore::find_or_open(const std::filesystem::path& file) {
    if (!files_.empty() && files_.front().path() != file) {
        files_.front().close(); // one open file at most, however many are asked about
    }
    const auto stamp = stamp_of(file);
    if (const auto known = by_path_.find(file.native()); known != by_path_.end()) {
        if (stamp && known->second->stamp() == *stamp) {
            files_.splice(files_.begin(), files_, known->second);
            return &files_.front();
        }
        forget(known->second);
    }
    if (!stamp) {
        return tl::unexpected(stamp.error());
    }
    return DecodedFile::open(file, *stamp, *decoder_).map([&](DecodedFile&& opened) {
        files_.push_front(std::move(opened));
        by_path_.emplace(file.native(), files_.begin());
        return &files_.front();
    });
}

Result<void> AudioStore::load(DecodedFile& file) {
    if (file.is_resident() || file.bytes() > byte_limit_) {
        return {};
    }
    make_room(file.bytes());
    return file.load().map([&] { resident_bytes_ += file.bytes(); });
}

void AudioStore::make_room(std::size_t bytes) {
    for (auto file = files_.rbegin(); file != files_.rend() && resident_bytes_ > byte_limit_ - bytes;
         ++file) {
        if (file->is_resident()) {
            resident_bytes_ -= file->bytes();
            file->unload();
        }
    }
}

void AudioStore::forget(Files::iterator file) {
    if (file->is_resident()) {
        resident_bytes_ -= file->bytes();
    }
    by_path_.erase(file->path().native());
    files_.erase(file);
}

} // namespace headless
