#pragma once
// Texts that scripts keep in the project, by the name of the script and a key.

#include <string>
#include <string_view>
#include <vector>

namespace headless::project {

/// Names are compared without regard to case and kept in capitals. Sections and their entries keep the order in
/// which they were first set.
class ExtensionData {
public:
    struct Entry {
        std::string key;
        std::string value;
    };

    struct Section {
        std::string name;
        std::vector<Entry> entries; ///< never empty
    };

    const std::vector<Section>& sections() const { return sections_; }

    /// Null if there is none.
    const Section* section(std::string_view name) const;

    /// Null if there is none.
    const std::string* value(std::string_view section, std::string_view key) const;

    void set(std::string_view section, std::string_view key, std::string value);

    void erase(std::string_view section, std::string_view key);
    void erase(std::string_view section);

private:
    std::vector<Section> sections_;
};

} // namespace headless::project
