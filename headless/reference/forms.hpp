#pragma once
// The reference in each of its output formats. All end with a line break.

#include "headless/reference/catalogue.hpp"

#include <string>

namespace headless::reference {

// All functions of all groups, for reading.
std::string text_form(const Catalogue& catalogue);
std::string markdown_form(const Catalogue& catalogue);

/// One self-contained page with a search field.
std::string html_form(const Catalogue& catalogue);

/// Definitions for the Lua language server: what Lua scripts may call, for completion and types in editors.
std::string luals_form(const Catalogue& catalogue);

/// A Python module of signatures: the functions for ctypes, and what a workstation of
/// meridek_felspar.headless offers.
std::string python_form(const Catalogue& catalogue);

} // namespace headless::reference
