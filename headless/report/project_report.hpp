#pragma once
// What a project file holds: the figures that `felspar project` prints, and their output formats.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace headless::report {

struct EnvelopeFigures {
    std::string name;
    std::size_t points = 0;
};

/// The other end of a send.
struct SendEnd {
    std::size_t track = 0;             ///< number from 1
    std::optional<std::string> name{}; ///< empty if the project has no such track
};

struct TrackFigures {
    std::string name{};
    int depth = 0;          ///< number of folders around the track
    std::size_t folder = 0; ///< number of the folder around it, 0 at top level
    bool is_folder = false;
    std::size_t items = 0;
    std::size_t takes = 0; ///< without empty ones
    std::size_t effects = 0;
    std::size_t input_effects = 0; ///< on what is recorded
    std::size_t take_effects = 0;
    std::vector<SendEnd> sends{};
    std::vector<SendEnd> receives{};
    std::vector<int> hardware_outputs{}; ///< as the file numbers them, from 0
    std::vector<EnvelopeFigures> envelopes{};
    std::vector<EnvelopeFigures> take_envelopes{};
};

struct MarkerFigures {
    int number = 0; ///< as displayed
    std::string name{};
    double position_seconds = 0.0;
    double end_seconds = 0.0; ///< of a region
};

struct MediaFile {
    std::filesystem::path file;
    std::size_t takes = 0; ///< that play it
    bool is_missing = false;
};

/// Something that this host does not play as the workstation does.
struct Unplayed {
    std::string what; ///< "effect", "take with a pitch shift"
    std::size_t count = 0;
    std::vector<std::size_t> tracks{}; ///< numbers from 1, ascending; 0 is the master
};

struct ProjectReport {
    std::filesystem::path file{}; ///< as the user named it
    bool is_cut_off = false;      ///< the file ends in the middle
    std::string version{};        ///< of the program that saved it; may be empty
    std::string system{};         ///< on which it was saved; may be empty
    std::int64_t saved_at = 0;    ///< seconds since 1970 in UTC, 0 if the file does not say
    double length_seconds = 0.0;
    int sample_rate = 0;
    double tempo_bpm = 0.0; ///< at the start
    int meter_numerator = 0;
    int meter_denominator = 0;
    std::size_t tempo_points = 0;
    TrackFigures master{};
    std::vector<TrackFigures> tracks{};
    std::vector<MarkerFigures> markers{};
    std::vector<MarkerFigures> regions{};
    std::vector<MediaFile> media{}; ///< in the order of the tracks, each once
    std::vector<Unplayed> unplayed{};

    std::size_t missing_media() const;
};

/// The report for a terminal of 80 columns. Only paths may be longer. Long lists are cut, but not that of
/// missing media.
std::string text_of(const ProjectReport& report);

/// Each missing file, or that there is none; a line each, which begins with the project's name.
std::string text_of_check(const ProjectReport& report);

/// The report as one JSON object and a line break. Bytes that are not UTF-8 become U+FFFD.
std::string json_of(const ProjectReport& report);

} // namespace headless::report
