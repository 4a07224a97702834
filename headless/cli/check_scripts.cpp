#include "headless/cli/check_scripts.hpp"

#include "headless/check/script_check.hpp"
#include "headless/cli/messages.hpp"
#include "headless/report/figures.hpp"
#include "headless/report/printable.hpp"

#include <nlohmann/json.hpp>

#include <iostream>
#include <string>

namespace headless::cli {
namespace {

using check::Finding;
using check::ScriptCheck;
using nlohmann::ordered_json;

std::string kind_name(check::FindingKind kind) {
    switch (kind) {
    case check::FindingKind::key:
        return "key";
    case check::FindingKind::command:
        return "command";
    default:
        return "function";
    }
}

ordered_json as_json(const std::vector<Finding>& findings) {
    ordered_json list = ordered_json::array();
    for (const Finding& finding : findings)
        list.push_back({{"kind", kind_name(finding.kind)},
                        {"name", finding.name},
                        {"message", finding.message},
                        {"lines", finding.lines}});
    return list;
}

void print_json(const ScriptCheck& checked) {
    std::cout << figures::line_of({{"file", checked.file.string()},
                                   {"missing", as_json(checked.missing)},
                                   {"optional", as_json(checked.optional)}});
}

void print_text(const ScriptCheck& checked) {
    const auto print = [&](const Finding& finding, const char* mark) {
        std::cout << report::printable(checked.file.string() + ':' + std::to_string(finding.lines.front()) +
                                       ": " + mark + finding.message);
        if (finding.lines.size() > 1)
            std::cout << " (" << finding.lines.size() << " lines)";
        std::cout << '\n';
    };
    for (const Finding& finding : checked.missing)
        print(finding, "");
    for (const Finding& finding : checked.optional)
        print(finding, "optional: ");
}

} // namespace

int check_scripts(workstation::Workstation& workstation, const std::vector<std::filesystem::path>& scripts,
                  CheckForm form) {
    check::ScriptChecker checker(workstation);
    bool is_fine = true;
    for (const std::filesystem::path& script : scripts) {
        const auto checked = checker.check(script);
        is_fine = is_fine && checked && checked->missing.empty();
        if (checked)
            (form == CheckForm::json ? print_json : print_text)(*checked);
        else if (form == CheckForm::json)
            std::cout << figures::line_of({{"file", script.string()}, {"error", checked.error().message}});
        else
            std::cout << report::printable(checked.error().message) << '\n';
    }
    return finish_output() && is_fine ? 0 : 1;
}

} // namespace headless::cli
