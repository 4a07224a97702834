#include "headless/workstation/audio_source.hpp"

#include "common/letter_case.hpp"
#include "common/paths.hpp"
#include "headless/workstation/take_audio.hpp"
#include "headless/workstation/workstation.hpp"

#include <string>
#include <string_view>
#include <utility>

namespace headless::workstation {

namespace fs = std::filesystem;

namespace {

// The kinds are told by the file's name, as the workstation does.
constexpr std::pair<std::string_view, const char*> types[] = {
    {".flac", "FLAC"}, {".ogg", "VORBIS"}, {".opus", "OPUS"}, {".mp3", "MP3"}};

std::string type_of(const fs::path& file) {
    const std::string ending = letter_case::lowered(file.extension().string());
    for (const auto& [extension, type] : types)
        if (ending == extension)
            return type;
    return "WAVE";
}

} // namespace

Result<project::Source> open_source(audio::AudioCache& audio, const fs::path& file) {
    const Result<audio::AudioFormat> format = decoded_format(audio, file);
    if (!format)
        return tl::unexpected(format.error());
    return project::Source{paths::absolute(file), type_of(file), format->sample_rate, format->channels,
                           format->frames};
}

Result<project::Item*> Workstation::insert_audio(project::Track& track, const fs::path& file,
                                                 double position_seconds) {
    Result<project::Source> source = open_source(audio(), file);
    if (!source)
        return tl::unexpected(source.error());
    project::Item& item = track.add_item(position_seconds, source->length_seconds());
    item.add_take(std::move(*source), file.filename().string());
    return &item;
}

} // namespace headless::workstation
