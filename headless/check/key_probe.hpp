#pragma once
// Asks functions whether they know a key, by calling them with sample objects: what they then report, a script
// would get to see. So no list of keys has to be kept beside the functions.

#include "headless/check/source_survey.hpp"
#include "headless/script/definition.hpp"
#include "headless/workstation/script_call.hpp"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace headless::workstation {
class Workstation;
} // namespace headless::workstation

namespace headless::check {

/// A key that a function does not know.
struct UnknownKey {
    std::string key;
    std::string message; ///< what the function reports
};

class KeyProbe {
public:
    /// Adds the sample objects to the project, which calls change: it should be a new one.
    explicit KeyProbe(workstation::Workstation& workstation);

    /// The key among these arguments. Empty if the function knows it or takes none, and if it is no literal.
    std::optional<UnknownKey> unknown_key(const std::string& function,
                                          const std::vector<LiteralArgument>& arguments);

private:
    struct Function {
        script::ParsedDefinition definition;
        workstation::ScriptCall* call;
    };

    std::string call(const Function& function, const std::string& key, int category);
    void* sample(std::string_view type) const;

    workstation::Workstation& workstation_;
    std::map<std::string, Function> functions_{};                             ///< those that take keys
    std::map<std::pair<std::string, std::string>, std::string> complaints_{}; ///< by function and key
    std::vector<std::pair<std::string_view, void*>> samples_{};
};

} // namespace headless::check
