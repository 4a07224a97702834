#pragma once
// The running program.

#include <filesystem>
#include <string>
#include <vector>

namespace headless::system {

/// The file of the running program; empty if the system does not tell.
std::filesystem::path program_file();

/// The arguments of main() behind the program's name, in UTF-8.
std::vector<std::string> arguments(int argc, char** argv);

/// In UTF-8; empty if it is not set.
std::string environment_variable(const char* name);

/// From now on the output streams carry bytes as they are written, and a terminal takes them for UTF-8. On
/// Windows the console is as before when the program exits.
void use_utf8_streams();

} // namespace headless::system
