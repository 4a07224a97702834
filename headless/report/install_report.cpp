#include "headless/report/install_report.hpp"

#include "headless/report/figures.hpp"
#include "headless/report/printable.hpp"

#include <algorithm>
#include <array>
#include <cstddef>

namespace headless::report {
namespace {

using nlohmann::ordered_json;

std::string name_of(FileAction action) {
    constexpr std::array names{"installed", "replaced", "unchanged", "removed", "kept"};
    return names.at(static_cast<std::size_t>(action));
}

std::string file_line(const InstalledFile& file) {
    std::string line = figures::formatted("  %-10s", name_of(file.action).c_str()) + printable(file.path);
    if (!file.reason.empty())
        line += ": " + file.reason;
    if (!file.saved_as.empty())
        line += ", the file that was there is now " + printable(file.saved_as);
    return line + "\n";
}

std::string advice(const InstallReport& report) {
    std::string text;
    if (report.is_removal && report.files.empty())
        text += "Nothing is installed there.\n";
    if (!report.is_removal && report.kept_something())
        text += "To install in place of files that were kept, add --replace: they are moved aside.\n";
    if (report.is_dry_run)
        text += "Nothing was written.\n";
    else if (!report.is_removal)
        text += "The workstation loads the library when it is next started.\n";
    return text;
}

ordered_json text_or_null(const std::string& text) {
    return text.empty() ? ordered_json(nullptr) : ordered_json(text);
}

ordered_json object_of(const InstalledFile& file) {
    ordered_json object{{"path", file.path}, {"action", name_of(file.action)}};
    if (!file.reason.empty())
        object["reason"] = file.reason;
    if (!file.saved_as.empty())
        object["saved_as"] = file.saved_as;
    return object;
}

} // namespace

bool InstallReport::kept_something() const {
    return std::ranges::find(files, FileAction::kept, &InstalledFile::action) != files.end();
}

std::string text_of(const InstallReport& report) {
    std::string text = "Resource folder: " + printable(report.folder.string()) + "\n";
    for (const std::filesystem::path& other : report.others)
        text += "There is also " + printable(other.string()) + "; --resource-path names the one to use.\n";
    text += "Workstation: " +
            (report.version.empty() ? "version not known"
                                    : "version " + printable(report.version) + " saved the last project") +
            "\nSWS extension: " +
            (report.sws.empty() ? "not there; the ride and the loudness functions need it"
                                : printable(report.sws)) +
            "\n";
    for (const InstalledFile& file : report.files)
        text += file_line(file);
    return text + advice(report);
}

std::string json_of(const InstallReport& report) {
    ordered_json others = ordered_json::array();
    for (const std::filesystem::path& other : report.others)
        others.push_back(other.string());
    ordered_json files = ordered_json::array();
    for (const InstalledFile& file : report.files)
        files.push_back(object_of(file));
    return figures::line_of({{"resource_folder", report.folder.string()},
                             {"other_folders", others},
                             {"version", text_or_null(report.version)},
                             {"sws", text_or_null(report.sws)},
                             {"files", files},
                             {"removal", report.is_removal},
                             {"dry_run", report.is_dry_run}});
}

} // namespace headless::report
