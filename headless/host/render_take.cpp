#include "headless/host/render_take.hpp"

#include "headless/audio/render.hpp"
#include "headless/host/take_audio.hpp"
#include "headless/host/text.hpp"
#include "headless/host/workstation.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace headless {
namespace {

namespace fs = std::filesystem;

struct RenderTarget {
    fs::path file;
    ExistingFile existing = ExistingFile::keep;
};

// "001", "002", ..., "1000": wider only when it must be.
std::string three_digits(std::size_t number) {
    const std::string digits = std::to_string(number);
    return digits.size() < 3 ? std::string(3 - digits.size(), '0') + digits : digits;
}

bool is_taken(const fs::path& file) {
    std::error_code error;
    return fs::exists(fs::symlink_status(file, error));
}

bool is_same_file(const fs::path& left, const fs::path& right) {
    std::error_code error;
    return fs::equivalent(left, right, error);
}

std::optional<RenderTarget> target_at(fs::path file, const Workstation& workstation, const Take& take) {
    if (!is_taken(file)) {
        return RenderTarget{std::move(file)};
    }
    if (workstation.may_replace(file) && !is_same_file(file, take.source.file)) {
        return RenderTarget{std::move(file), ExistingFile::replace};
    }
    return std::nullopt;
}

RenderTarget choose_target(Workstation& workstation, const Take& take) {
    const std::string_view stem = without_audio_extension(take.name);
    const fs::path folder = workstation.render_folder();
    const fs::path plain = folder / file_name_for(stem, ".wav");
    std::optional<RenderTarget> target = target_at(plain, workstation, take);
    for (std::size_t& number = workstation.last_render_number(plain); !target;) {
        const std::string ending = std::string("-").append(three_digits(++number)).append(".wav");
        target = target_at(folder / file_name_for(stem, ending), workstation, take);
    }
    return std::move(*target);
}

} // namespace

Result<Take*> render_to_new_take(Item& item, Workstation& workstation) {
    const Take* take = item.active_take();
    if (!take) {
        return tl::unexpected(Failure{"an item without a take cannot be rendered"});
    }
    const Result<TakeAudio> audio = audio_of(workstation.audio(), *take);
    if (!audio) {
        return tl::unexpected(audio.error());
    }
    const RenderTarget target = choose_target(workstation, *take);
    const Result<AudioFormat> written = render(workstation.audio(), take->source.file, audio->range,
                                               gain_of(*take), target.file, target.existing);
    if (!written) {
        return tl::unexpected(written.error());
    }
    std::string name(without_audio_extension(take->name));
    name.append(" render ").append(three_digits(item.takes().size()));
    const double pan = take->pan;
    Take& rendered =
        item.add_take({target.file, "WAVE", written->sample_rate, written->channels, written->frames}, name);
    rendered.pan = pan;
    item.set_active_take(rendered);
    return &rendered;
}

} // namespace headless
