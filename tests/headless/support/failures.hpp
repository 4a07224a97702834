#pragma once
// What tests expect of failures.

#include "headless/base/failure.hpp"

#include <gmock/gmock.h>

namespace headless::test {

/// Of a failure: its message contains the text.
inline auto tells(const std::string& text) {
    return testing::Field("message", &Failure::message, testing::HasSubstr(text));
}

/// Of a result: it is a failure whose message contains the text.
MATCHER_P(fails_telling, text, "fails telling '" + std::string(text) + "'") {
    *result_listener << (arg ? "which succeeds" : "which tells " + arg.error().message);
    return !arg && arg.error().message.find(text) != std::string::npos;
}

} // namespace headless::test
