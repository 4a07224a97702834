#pragma once
// Texts of any length that scripts pass by handle.

#include "common/plugin_abi.hpp"

#include <map>
#include <memory>
#include <string>

namespace headless::workstation {

struct FastString {
    std::string text;
};

class FastStrings {
public:
    FastString& create(std::string text);
    void erase(const FastString& string) { strings_.erase(&string); }

    /// Null for a handle that is null, stale or foreign.
    FastString* find(WDL_FastString* handle) const;

private:
    std::map<const void*, std::unique_ptr<FastString>> strings_;
};

} // namespace headless::workstation
