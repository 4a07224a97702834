#include "system/shell.hpp"

#include "system/posix/shell_answer.hpp"

#include <cstdio>

namespace shell {

std::optional<Answer> ask(const std::string& command) {
    FILE* const output = popen(command.c_str(), "r");
    if (!output)
        return std::nullopt;
    char word[64] = "";
    if (std::fscanf(output, "%63s", word) != 1)
        word[0] = '\0';
    const int status = pclose(output);
    return Answer{word, status};
}

bool run(const std::string& command) {
    FILE* const output = popen(command.c_str(), "r");
    return output && (pclose(output), true);
}

} // namespace shell
