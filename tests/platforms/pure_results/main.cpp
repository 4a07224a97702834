// Writes the results of the plug-in's functions that need no host, for a fixed list of inputs: pure_results FILE
// The bytes are the same on every platform. Paths are written relative to the current folder and with slashes, as
// separators are the system's own. The current folder must be empty.

#include "tests/platforms/pure_results/results.hpp"

#include <cstdio>
#include <exception>
#include <fstream>

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::fputs("Usage: pure_results FILE\n", stderr);
        return 2;
    }
    pure_results::Results results;
    for (const auto& add : {pure_results::add_numbers, pure_results::add_strings, pure_results::add_patterns,
                            pure_results::add_json, pure_results::add_records,
                            pure_results::add_levels_and_gains, pure_results::add_files})
        add(results);
    std::ofstream file(argv[1], std::ios::binary);
    file << results.text() << std::flush;
    return file ? 0 : 1;
} catch (const std::exception& error) {
    std::fprintf(stderr, "pure_results: %s\n", error.what());
    return 1;
}
