#include "headless/workstation/fast_strings.hpp"

#include <utility>

namespace headless::workstation {

FastString& FastStrings::create(std::string text) {
    auto string = std::make_unique<FastString>(FastString{std::move(text)});
    FastString& created = *string;
    strings_.emplace(&created, std::move(string));
    return created;
}

FastString* FastStrings::find(WDL_FastString* handle) const {
    const auto found = strings_.find(handle);
    return found == strings_.end() ? nullptr : found->second.get();
}

} // namespace headless::workstation
