#pragma once
// Finds out what a project file holds.

#include "headless/base/failure.hpp"
#include "headless/report/project_report.hpp"

#include <filesystem>

namespace headless::jobs {

/// Reads the project and looks for its media files. Fails as rpp::load_project does.
Result<report::ProjectReport> survey_project(const std::filesystem::path& file);

} // namespace headless::jobs
