#include "headless/project/extension_data.hpp"

#include <algorithm>
#include <utility>

namespace headless::project {
namespace {

std::string in_capitals(std::string_view name) {
    std::string result(name);
    for (char& letter : result)
        if (letter >= 'a' && letter <= 'z')
            letter = static_cast<char>(letter - ('a' - 'A'));
    return result;
}

} // namespace

const ExtensionData::Section* ExtensionData::section(std::string_view name) const {
    const auto found = std::ranges::find(sections_, in_capitals(name), &Section::name);
    return found == sections_.end() ? nullptr : &*found;
}

const std::string* ExtensionData::value(std::string_view section_name, std::string_view key) const {
    const Section* in = section(section_name);
    if (!in)
        return nullptr;
    const auto found = std::ranges::find(in->entries, in_capitals(key), &Entry::key);
    return found == in->entries.end() ? nullptr : &found->value;
}

void ExtensionData::set(std::string_view section_name, std::string_view key, std::string value) {
    std::string name = in_capitals(section_name);
    auto in = std::ranges::find(sections_, name, &Section::name);
    if (in == sections_.end())
        in = sections_.insert(in, {std::move(name), {}});
    std::string entry_key = in_capitals(key);
    const auto entry = std::ranges::find(in->entries, entry_key, &Entry::key);
    if (entry == in->entries.end())
        in->entries.push_back({std::move(entry_key), std::move(value)});
    else
        entry->value = std::move(value);
}

void ExtensionData::erase(std::string_view section_name, std::string_view key) {
    const auto in = std::ranges::find(sections_, in_capitals(section_name), &Section::name);
    if (in == sections_.end())
        return;
    std::erase_if(in->entries, [&](const Entry& entry) { return entry.key == in_capitals(key); });
    if (in->entries.empty())
        sections_.erase(in);
}

void ExtensionData::erase(std::string_view section_name) {
    std::erase_if(sections_,
                  [&](const Section& section) { return section.name == in_capitals(section_name); });
}

} // namespace headless::project
