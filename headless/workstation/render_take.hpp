#pragma once
// Renders an item's active take to a file that becomes a new take of the item.

#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"

namespace headless::workstation {

class Workstation;

/// Renders what the item plays of its active take, with take volume and active volume envelope, into the
/// workstation's render folder, and adds the file as a take that becomes the active one. The file is named
/// after the take. If the name is taken, "-001", "-002", ... is appended, unless the workstation decides
/// otherwise about the existing file.
/// @returns the new take; on failure the item is unchanged
Result<project::Take*> render_to_new_take(project::Item& item, Workstation& workstation);

} // namespace headless::workstation
