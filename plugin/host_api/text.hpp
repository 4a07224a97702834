#pragma once
// Strings from callers, who may pass null for an empty one.

constexpr const char* text_or_empty(const char* text) { return text ? text : ""; }
