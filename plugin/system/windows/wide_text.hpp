#pragma once
// The texts that Windows takes.

#include <string>

/// Converts UTF-8 to UTF-16. What is not UTF-8 becomes U+FFFD.
std::wstring wide_text(const std::string& text);
