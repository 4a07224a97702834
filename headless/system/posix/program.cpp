#include "headless/system/program.hpp"

#include <cstdlib>

namespace headless::system {

std::vector<std::string> arguments(int argc, char** argv) {
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

std::string environment_variable(const char* name) {
    const char* const value = std::getenv(name);
    return value ? value : "";
}

void use_utf8_streams() {} // they do already

} // namespace headless::system
