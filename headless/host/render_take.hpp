#pragma once
// Rendering an item's active take to a file that becomes a new take of the item.

#include "headless/base/failure.hpp"
#include "headless/project/project.hpp"

namespace headless {

class Workstation;

/// Renders what the item plays of its active take, with take volume and active volume envelope, into the
/// workstation's render folder, and adds the file as a take that becomes the active one. The file is named
/// after the take; a taken name gets "-001", "-002", ... unless the workstation allows to replace the file.
/// @returns the new take; on failure the item is as it was
Result<Take*> render_to_new_take(Item& item, Workstation& workstation);

} // namespace headless
