#pragma once
// What an installation into the workstation did with each file, as text and as JSON.

#include <filesystem>
#include <string>
#include <vector>

namespace headless::report {

enum class FileAction {
    installed,
    replaced,
    unchanged, ///< the file had these bytes already
    removed,
    kept, ///< the file is not ours, or no longer; it stays
};

struct InstalledFile {
    std::string path; ///< in the resource folder, with slashes
    FileAction action = FileAction::installed;
    std::string reason{};   ///< why it was kept
    std::string saved_as{}; ///< the path to which the user's file was moved; mostly empty
};

struct InstallReport {
    std::filesystem::path folder{};              ///< the workstation's resource folder
    std::vector<std::filesystem::path> others{}; ///< further ones, which were left alone
    std::string version{};                       ///< of the workstation; may be empty
    std::string sws{};                           ///< the SWS extension's file name; may be empty
    std::vector<InstalledFile> files{};          ///< ordered by path
    bool is_removal = false;
    bool is_dry_run = false;

    /// Whether a file was kept that should have been installed, replaced or removed.
    bool kept_something() const;
};

/// The report for a terminal, one line a file.
std::string text_of(const InstallReport& report);

/// The report as one JSON object and a line break. Bytes that are not UTF-8 become U+FFFD.
std::string json_of(const InstallReport& report);

} // namespace headless::report
