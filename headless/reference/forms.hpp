#pragma once
// The reference in each of its forms. All end with a line break.

#include "headless/reference/catalogue.hpp"

#include <string>

namespace headless {

// All functions of all doors, to be read.
std::string text_form(const Catalogue& catalogue);
std::string markdown_form(const Catalogue& catalogue);

/// One page that stands alone, with a field to search by.
std::string html_form(const Catalogue& catalogue);

/// Definitions for the Lua language server: what Lua scripts may call, for completion and types in editors.
std::string luals_form(const Catalogue& catalogue);

/// A Python module of signatures: the functions for ctypes, and what a workstation of
/// meridek_felspar.headless offers.
std::string python_form(const Catalogue& catalogue);

} // namespace headless
