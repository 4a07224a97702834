#include "headless/workstation/text.hpp"

#include "common/letter_case.hpp"

#include <algorithm>
#include <array>
#include <cstring>

namespace headless::workstation {
namespace {

constexpr std::size_t longest_file_name = 255; // bytes, on every common Linux file system

constexpr std::array<std::string_view, 14> audio_extensions{
    "wav", "wave", "bwf", "aif", "aiff", "aifc", "flac", "ogg", "oga", "opus", "mp3", "w64", "caf", "au"};

bool is_continuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

bool is_safe_in_file_names(char byte) {
    return byte != '/' && byte != 0x7F && static_cast<unsigned char>(byte) >= 0x20U;
}

} // namespace

std::string_view utf8_prefix(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes)
        return text;
    std::size_t end = bytes;
    while (end > 0 && bytes - end < 3 && is_continuation(text[end]))
        --end;
    return text.substr(0, is_continuation(text[end]) ? bytes : end);
}

void copy_text(std::string_view text, char* buffer, int size) {
    if (!buffer || size <= 0)
        return;
    const std::string_view kept = utf8_prefix(text, static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, kept.data(), kept.size());
    buffer[kept.size()] = '\0';
}

std::string to_string(const char* text) { return text ? text : ""; }

std::string_view without_audio_extension(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0)
        return name;
    const std::string extension = letter_case::lowered(name.substr(dot + 1));
    const bool is_audio = std::ranges::find(audio_extensions, extension) != audio_extensions.end();
    return is_audio ? name.substr(0, dot) : name;
}

std::string file_name_for(std::string_view stem, std::string_view ending) {
    std::string name(utf8_prefix(stem.empty() ? "untitled" : stem, longest_file_name - ending.size()));
    std::ranges::replace_if(
        name, [](char byte) { return !is_safe_in_file_names(byte); }, '_');
    const auto has = [&](char quote) { return name.find(quote) != std::string::npos; };
    if (has('"') && has('\'') && has('`')) // the project file cannot quote a path with all three
        std::ranges::replace(name, '`', '_');
    return name.append(ending);
}

} // namespace headless::workstation
