#include "headless/workstation/render_take.hpp"

#include "common/path_text.hpp"
#include "headless/audio/render.hpp"
#include "headless/workstation/take_audio.hpp"
#include "headless/workstation/text.hpp"
#include "headless/workstation/workstation.hpp"

#include <filesystem>
#include <string>
#include <system_error>
#include <utility>

namespace headless::workstation {
namespace {

namespace fs = std::filesystem;

// "001", "002", ..., "1000": wider only if necessary.
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

Result<ExistingRender> judge(const Workstation& workstation, const fs::path& file,
                             const project::Take& take) {
    return workstation.judge_existing_render && !is_same_file(file, take.source.root().file)
               ? workstation.judge_existing_render(file)
               : ExistingRender::avoid;
}

// Empty if the name belongs to another file.
Result<fs::path> publish_as(fs::path file, AtomicFile& render, const Workstation& workstation,
                            const project::Take& take) {
    const bool taken = is_taken(file);
    const Result<ExistingRender> judgement = taken ? judge(workstation, file, take) : ExistingRender::replace;
    if (!judgement)
        return tl::unexpected(judgement.error());
    if (*judgement == ExistingRender::avoid)
        return fs::path();
    if (*judgement == ExistingRender::use_if_same)
        return render.has_bytes_of(file).map([&](bool is_same) { return is_same ? file : fs::path(); });
    return render.publish_as(file, taken ? ExistingFile::replace : ExistingFile::keep).map([&] {
        return file;
    });
}

// Publishes under the plain name, or with the first number that is free.
Result<fs::path> publish(const fs::path& plain, AtomicFile& render, Workstation& workstation,
                         const project::Take& take) {
    const std::string_view stem = without_audio_extension(take.name);
    Result<fs::path> file = publish_as(plain, render, workstation, take);
    for (std::size_t& number = workstation.last_render_number(plain); file && file->empty();) {
        const std::string ending = std::string("-").append(three_digits(++number)).append(".wav");
        file = publish_as(plain.parent_path() / path_text::path_of(file_name_for(stem, ending)), render,
                          workstation, take);
    }
    return file;
}

} // namespace

Result<project::Take*> render_to_new_take(project::Item& item, Workstation& workstation) {
    const project::Take* take = item.active_take();
    if (!take || take->is_empty)
        return tl::unexpected(Failure{"an item without a take cannot be rendered"});
    const Result<TakeAudio> audio = heard_audio_of(workstation.audio(), *take);
    if (!audio)
        return tl::unexpected(audio.error());
    const fs::path plain = workstation.render_folder() /
                           path_text::path_of(file_name_for(without_audio_extension(take->name), ".wav"));
    auto render = audio::render(*audio->sound, audio->range, gain_of(*take), plain);
    if (!render)
        return tl::unexpected(render.error());
    const auto file = publish(plain, render->file, workstation, *take);
    if (!file)
        return tl::unexpected(file.error());
    const audio::AudioFormat& written = render->format;
    std::string name(without_audio_extension(take->name));
    name.append(" render ").append(three_digits(item.takes().size()));
    const double pan = take->pan;
    project::Take& rendered =
        item.add_take({*file, "WAVE", written.sample_rate, written.channels, written.frames}, name);
    rendered.pan = pan;
    item.set_active_take(rendered);
    return &rendered;
}

} // namespace headless::workstation
