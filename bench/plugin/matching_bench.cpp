// The dialogue import of 100,000 lines a side for a host that does nothing: what is left is the walk through
// both folders, the grouping and the pairing. Every second line is in a named group, every tenth has no
// partner.

#include "dialogue/lingomat.hpp"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int lines = 100'000;
constexpr int lines_a_scene = 1'000;

struct LanguageFolders {
    LanguageFolders() {
        for (const char* side : {"subject", "base"})
            for (int scene = 0; scene < lines / lines_a_scene; ++scene)
                make_scene(root / side / ("scene" + std::to_string(scene)), scene * lines_a_scene);
    }
    ~LanguageFolders() { fs::remove_all(root); }
    LanguageFolders(const LanguageFolders&) = delete;
    LanguageFolders& operator=(const LanguageFolders&) = delete;

    // Links to one empty file a scene, as file systems take long to make so many files.
    static void make_scene(const fs::path& folder, int first_line) {
        fs::create_directories(folder);
        const fs::path empty = folder / "empty.txt";
        std::ofstream(empty).close();
        const bool is_base = folder.parent_path().filename() == "base";
        for (int line = first_line; line < first_line + lines_a_scene; ++line) {
            std::string name = line % 2 == 0 ? "anna_" : "crowd_";
            name.append(std::to_string(line)).append(is_base && line % 10 == 0 ? "_old.wav" : ".wav");
            fs::create_hard_link(empty, folder / name);
        }
    }

    fs::path root = fs::temp_directory_path() / ("felspar-matching-" + std::to_string(getpid()));
};

void import_of_empty_files(benchmark::State& state) {
    const LanguageFolders folders;
    const std::vector<std::string> groups{"anna_", "boris_"};
    for (auto _ : state) {
        std::vector<std::string> unmatched;
        mk_api::LINGOMAT::LINGOMAT_InsertMediaItems((folders.root / "subject").string(),
                                                    (folders.root / "base").string(), 0.0, 1.0, 0, true, true,
                                                    0, groups, unmatched);
        if (unmatched.size() != lines / 10)
            state.SkipWithError("wrong pairs");
    }
    state.SetItemsProcessed(state.iterations() * lines);
}
BENCHMARK(import_of_empty_files)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
