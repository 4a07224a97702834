#include "bindings/python/json_forms.hpp"

namespace json_utility {
namespace {

/// The fraction of a float is dropped. A float beyond the range of addresses becomes null.
json::number_unsigned_t address_in(const json& value) {
    constexpr double end_of_addresses = 0x1p64;
    if (!value.is_number_float())
        return value.get<json::number_unsigned_t>();
    const auto number = value.get<double>();
    return number >= 0.0 && number < end_of_addresses ? static_cast<json::number_unsigned_t>(number) : 0;
}

} // namespace

template <>
std::vector<MediaItem*> get_array<MediaItem*>(json& value) {
    std::vector<MediaItem*> items;
    if (!value.is_array())
        return items;
    for (const json& element : value)
        if (const auto address = element.find("MediaItem*"); element.is_object() && address != element.end())
            items.push_back(reinterpret_cast<MediaItem*>(address_in(*address)));
    return items;
}

template <>
std::vector<std::string> get_array<std::string>(json& value) {
    std::vector<std::string> texts;
    if (!value.is_array())
        return texts;
    for (const json& element : value)
        if (element.is_string())
            texts.push_back(element.get<std::string>());
    return texts;
}

} // namespace json_utility

nlohmann::json python_utility::array_to_typeJson(std::vector<std::string> list) {
    nlohmann::json array = nlohmann::json::array();
    for (std::string& text : list)
        array.push_back({{"string", std::move(text)}});
    return array;
}
