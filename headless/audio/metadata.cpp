#include "headless/audio/metadata.hpp"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace headless::audio {
namespace {

/// A text that libsndfile knows, and its names in the three kinds of tags; null where there is none.
struct Tag {
    int text;
    const char* info;
    const char* vorbis;
    const char* id3;
};

constexpr Tag tags[] = {
    {SF_STR_TITLE, "INAM", "TITLE", "TIT2"},         {SF_STR_ARTIST, "IART", "ARTIST", "TPE1"},
    {SF_STR_ALBUM, "IPRD", "ALBUM", "TALB"},         {SF_STR_TRACKNUMBER, "ITRK", "TRACKNUMBER", "TRCK"},
    {SF_STR_GENRE, "IGNR", "GENRE", "TCON"},         {SF_STR_DATE, "ICRD", "DATE", "TYER"},
    {SF_STR_COMMENT, "ICMT", "DESCRIPTION", "COMM"}, {SF_STR_COPYRIGHT, "ICOP", "COPYRIGHT", "TCOP"},
    {SF_STR_SOFTWARE, "ISFT", nullptr, "TSSE"},      {SF_STR_LICENSE, nullptr, "LICENSE", nullptr}};

/// How a format's tags are called.
struct Scheme {
    const char* prefix;
    const char* const Tag::*name;
};

Scheme scheme_of(const SF_INFO& info) {
    switch (info.format & SF_FORMAT_TYPEMASK) {
    case SF_FORMAT_FLAC:
    case SF_FORMAT_OGG:
        return {"VORBIS:", &Tag::vorbis};
    case SF_FORMAT_MPEG:
        return {"ID3:", &Tag::id3};
    default:
        return {"INFO:", &Tag::info};
    }
}

template <std::size_t Size>
std::string text_of(const char (&field)[Size]) {
    const std::string_view whole(field, Size);
    return std::string(whole.substr(0, whole.find('\0')));
}

void add(Metadata& metadata, std::string identifier, std::string text) {
    if (!text.empty())
        metadata.emplace_back(std::move(identifier), std::move(text));
}

void add_broadcast(Metadata& metadata, SNDFILE* sound) {
    SF_BROADCAST_INFO_VAR(1 << 16) broadcast{};
    if (sf_command(sound, SFC_GET_BROADCAST_INFO, &broadcast, sizeof(broadcast)) != SF_TRUE)
        return;
    add(metadata, "BWF:Description", text_of(broadcast.description));
    add(metadata, "BWF:Originator", text_of(broadcast.originator));
    add(metadata, "BWF:OriginatorReference", text_of(broadcast.originator_reference));
    add(metadata, "BWF:OriginationDate", text_of(broadcast.origination_date));
    add(metadata, "BWF:OriginationTime", text_of(broadcast.origination_time));
    const std::uint64_t frames =
        std::uint64_t{broadcast.time_reference_high} << 32U | broadcast.time_reference_low;
    add(metadata, "BWF:TimeReference", std::to_string(frames));
    add(metadata, "BWF:CodingHistory", text_of(broadcast.coding_history));
}

} // namespace

Metadata metadata_of(SNDFILE* sound, const SF_INFO& info) {
    Metadata metadata;
    add_broadcast(metadata, sound);
    const Scheme scheme = scheme_of(info);
    for (const Tag& tag : tags) {
        const char* text = sf_get_string(sound, tag.text);
        if (const char* name = tag.*scheme.name; name && text)
            add(metadata, std::string(scheme.prefix) + name, text);
    }
    return metadata;
}

} // namespace headless::audio
