// Writes the sample project to the file named on the command line, for the independent parser.

#include "headless/rpp/rpp.hpp"
#include "tests/headless/rpp/sample_project.hpp"

#include <iostream>

int main(int count, char** arguments) {
    if (count != 2)
        return 2;
    const std::filesystem::path file = arguments[1];
    headless::project::Project project;
    headless::test::fill_sample(project, file.parent_path());
    const auto saved = headless::rpp::save_project(project, file);
    if (!saved)
        std::cerr << saved.error().message << '\n';
    return saved ? 0 : 1;
}
