#include "headless/system/program.hpp"

namespace headless::system {

std::vector<std::string> arguments(int argc, char** argv) {
    return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

void use_utf8_streams() {} // they do already

} // namespace headless::system
