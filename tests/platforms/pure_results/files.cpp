// Files, folders, paths and the pairing of dialogue lines, in a small tree with names of several scripts.

#include "api/project/files.hpp"

#include "api/project/folders.hpp"
#include "dialogue/lines.hpp"
#include "object/path.hpp"
#include "tests/platforms/pure_results/results.hpp"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>

namespace pure_results {
namespace {

namespace fs = std::filesystem;
using namespace MK_FELSPAR;

/// The current folder, as functions of the plug-in take and give paths: in UTF-8.
std::string here() {
    const std::u8string path = fs::current_path().u8string();
    return {path.begin(), path.end()};
}

/// Writes a path relative to the current folder and with slashes.
std::string relative(std::string path) {
    std::string base = here();
    for (std::string* each : {&path, &base})
        std::ranges::replace(*each, '\\', '/');
    if (path.starts_with(base))
        path.replace(0, base.size(), ".");
    return path;
}

std::string content(const std::string& folder, const char* file, int size = 64) {
    std::string text(64, '\0');
    return ReadFile(folder.c_str(), file, text.data(), size) ? shown(text.c_str()) : "refused";
}

void add_reading_and_writing(Results& results, const std::string& folder) {
    const struct {
        const char *name, *text;
        int mode;
    } writes[] = {{"\u53f0\u8a5e \u00e9.txt", "one\n", 0},
                  {"\u53f0\u8a5e \u00e9.txt", "two\r\n\xff", 2},
                  {"\u53f0\u8a5e \u00e9.txt", "three", 1},
                  {"\u53f0\u8a5e \u00e9.txt", "four\n\n", 1},
                  {"a.b.txt", "\x1a behind the end mark", 0},
                  {"a.b.txt", "5", 1},
                  {"plain", "\n", 0},
                  {"plain", "longer", 0},
                  {"plain", "", 0},
                  {"x.txt", "unknown mode", 3},
                  {"deep/\u00e9/x", "no such folder", 0},
                  {"\U0001f3a7.txt", "beyond 16 bits", 0}};
    for (const auto& each : writes)
        results.add("write " + shown(each.name) + " " + std::to_string(each.mode) + ": " +
                    std::to_string(WriteFile(folder.c_str(), each.name, each.text, each.mode)));
    for (const char* name :
         {"\u53f0\u8a5e \u00e9.txt", "\u53f0\u8a5e \u00e9(1).txt", "\u53f0\u8a5e \u00e9(2).txt", "a.b.txt",
          "a.b(1).txt", "plain", "x.txt", "\U0001f3a7.txt", "none"})
        results.add("read " + shown(name) + ": " + content(folder, name) + content(folder, name, 4));
}

void add_copying(Results& results, const std::string& folder) {
    const auto copy = [&](const char* from, const char* to) {
        results.add("copy " + shown(from) + " to " + shown(to) + ": " +
                    std::to_string(SetCopyFile((folder + "/" + from).c_str(), (folder + "/" + to).c_str())));
    };
    WriteFile((folder + "/\u00e9/inner").c_str(), "\u65e5\u672c.txt", "inner\n", 0);
    copy("\u53f0\u8a5e \u00e9.txt", "copy \u00e9.txt");
    copy("a.b.txt", "copy \u00e9.txt");
    copy("\u00e9", "\u00e0");
    copy("\u00e9", "\u00e9/inside itself");
    copy("none", "copy");
    results.add("copied: " + content(folder, "copy \u00e9.txt") +
                content(folder + "/\u00e0/inner", "\u65e5\u672c.txt"));
    char path[512] = "unwritten";
    for (const char* name : {"\u65e5\u672c \u00e9", "a/b\u00e9/c", ""}) {
        const bool is_made = SetPathFolder(folder.c_str(), name, 0, path, sizeof path);
        results.add("folder " + shown(name) + ": " + std::to_string(is_made) + " " + shown(relative(path)));
    }
}

void add_paths(Results& results, const std::string& folder) {
    for (const char* name : {"/\u53f0\u8a5e \u00e9.txt", "/a.b.txt", "/plain", "/\u00e9",
                             "/\u00e9/inner/\u65e5\u672c.txt", "/none", ""}) {
        mk_object::mk_Path info;
        const std::string path = *name ? folder + name : "";
        const int code = mk_api::path::GetPathInfo(path, info);
        results.add("path " + shown(name) + ": " + std::to_string(code) + " " +
                    shown({relative(info.ParentPath->value), info.ParentName->value,
                           relative(info.FilePath->value), info.FileName->value,
                           info.FileNameWithoutExtension->value, info.Extension->value, info.Type->value}));
    }
    nlohmann::json source = {
        {"FileName", {{"string", "\u00e9.wav"}}}, {"Extension", {{"string", "wav"}}}, {"Type", 1}};
    results.add("path from JSON: " + shown(mk_object::mk_Path(source).to_json().dump()));
}

void add_dialogue(Results& results, const std::string& folder) {
    const char* const names[] = {"Anna_001.wav",
                                 "anna_002.WAV",
                                 "\u00c9mile_001.wav",
                                 "\u53f0\u8a5e_1.wav",
                                 "\u53f0\u8a5e_10.wav",
                                 "notes.txt",
                                 "x.wave",
                                 ".wav",
                                 "b.tar.wav"};
    for (const char* language : {"/ja", "/en/\u53f0\u8a5e"})
        for (const char* name : names)
            WriteFile((folder + language).c_str(), name, "", 0);
    WriteFile((folder + "/ja/deep \u00e9").c_str(), "\u672c.wav", "", 0);
    std::vector<mk_api::LINGOMAT::Line> subjects = mk_api::LINGOMAT::read_lines(folder + "/ja");
    // The order is the file system's, and that of paths depends on the separator.
    std::ranges::sort(subjects, {}, [](const auto& line) { return relative(line.path); });
    const mk_api::LINGOMAT::LinesByName bases(mk_api::LINGOMAT::read_lines(folder + "/en"));
    for (const auto& subject : subjects) {
        const mk_api::LINGOMAT::Line* base = bases.find(subject.name);
        results.add("line " + shown(subject.name) + " " + shown(relative(subject.path)) + ": " +
                    (base ? shown(relative(base->path)) : "unmatched") + " in " +
                    shown(mk_api::LINGOMAT::master_name(subject.name, {"ANNA", "\u00e9mile", "\u8a5e"})));
    }
    for (const char* extension : {"wav", "TXT", "", "tar.wav"}) {
        std::vector<std::string> paths;
        const bool is_folder = mk_api::path::GetFilePathList(folder, extension, paths);
        std::ranges::transform(paths, paths.begin(), relative);
        std::ranges::sort(paths);
        results.add("list " + shown(extension) + ": " + std::to_string(is_folder) + " " + shown(paths));
    }
}

} // namespace

void add_files(Results& results) {
    const std::string folder = here() + "/\u30c6\u30b9\u30c8 \u00e9";
    add_reading_and_writing(results, folder);
    add_copying(results, folder);
    add_paths(results, folder);
    add_dialogue(results, folder);
}

} // namespace pure_results
