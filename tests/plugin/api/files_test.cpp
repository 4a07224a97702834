// Folders made, text files written and read, copies and walks, in a folder that the test fills.

#include "api/project/files.hpp"
#include "api/project/folders.hpp"
#include "tests/plugin/support/bound_plugin.hpp"
#include "tests/plugin/support/failing_memory.hpp"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace MK_FELSPAR;
using headless::test::write_bytes;

class Files : public mk_test::BoundPlugin {
protected:
    static bool is_folder(const std::string& path) { return fs::is_directory(path); }
    bool write(const char* file, const std::string& text, int mode) const {
        return WriteFile(made.c_str(), file, text.c_str(), mode);
    }
    std::string read(const char* file, int size = 70000) {
        return ReadFile(made.c_str(), file, content.data(), size) ? content.c_str() : "refused";
    }
    bool copy(const std::string& from, const std::string& to) const {
        return SetCopyFile((here + "/" + from).c_str(), (here + "/" + to).c_str());
    }

    const std::string here = folder.path, made = here + "/made";
    char full[1024] = "", name[64] = "";
    std::string content = std::string(70000, '?');
};

TEST_F(Files, MakeFoldersWithTimeStamps) {
    const char* formats[] = {"a/b", "a/b_%m%d_%H%M", "a/b_%m%d_%H%M%S", "a/b_%Y%m%d_%H%M%S", "a/b"};
    for (int type = 0; type < 5; ++type) {
        char before[64], after[64] = "";
        const auto print_now = [&](char* text) {
            const std::time_t seconds = std::time(nullptr);
            std::strftime(text, 64, formats[type], std::localtime(&seconds));
        };
        do { // until the clock stands still
            print_now(before);
            EXPECT_TRUE(SetProjectPathFolder("a/b", type, full, sizeof full, name, sizeof name));
            print_now(after);
        } while (std::string(before) != after);
        EXPECT_STREQ(name, before);
        EXPECT_EQ(full, here + "/" + name);
        EXPECT_PRED1(is_folder, full);
    }
}

TEST_F(Files, MakeFoldersWhereTheyAreToldTo) {
    EXPECT_TRUE(SetResoucePathFolder("a", 0, full, 4, name, sizeof name));
    EXPECT_EQ(full, here.substr(0, 3)) << "cut to the buffer";
    EXPECT_TRUE(SetPathFolder("/nowhere", made.c_str(), 0, full, sizeof full));
    EXPECT_EQ(full, made) << "an absolute name stands alone";
    EXPECT_TRUE(SetPathFolder(full, "", 0, full, sizeof full));
    EXPECT_EQ(full, made + "/");
    write_bytes(folder / "file", "");
    EXPECT_FALSE(SetPathFolder(here.c_str(), "file/below", 0, full, sizeof full));
    EXPECT_EQ(full, made + "/") << "left alone";
}

TEST_F(Files, StoreTheRecordFolderAsTheBufferHoldsIt) {
    EXPECT_TRUE(SetProjectInfoRecAddPath(nullptr, "day", full, sizeof full, name, 3));
    EXPECT_EQ(full, here);
    EXPECT_EQ(workstation.project().record_path, here.substr(0, 2)) << "cut to the buffer";
    char kept[] = "kept";
    EXPECT_TRUE(SetProjectInfoRecAddPath(nullptr, "day", full, sizeof full, kept, 0));
    EXPECT_FALSE(SetProjectInfoRecAddPath(nullptr, "day", full, sizeof full, nullptr, 9));
    EXPECT_EQ(workstation.project().record_path, "kept");
}

TEST_F(Files, AreWrittenOverAppendedToOrNumbered) {
    EXPECT_FALSE(write("x", "text", 3)) << "an unknown mode";
    EXPECT_TRUE(fs::is_empty(made)) << "only the folder is made";
    const std::tuple<const char*, const char*, int> writes[] = {
        {"a.txt", "long text", 0}, {"a.txt", "new", 0},  {"a.txt", "\r\n\n", 2}, {"a.txt", "1", 1},
        {"a.txt", "2", 1},         {"a(1).txt", "3", 1}, {"notes", "", 2},       {"notes", "4", 1}};
    for (const auto& [file, text, mode] : writes)
        EXPECT_TRUE(write(file, text, mode)) << file << ' ' << text;
    EXPECT_EQ(read("a.txt") + read("a(1).txt") + read("a(2).txt") + read("a(1)(1).txt") + read("notes(1)."),
              "new\r\n\n1\n2\n3\n4\n");
    EXPECT_EQ(read("notes"), "");
    EXPECT_FALSE(write("notes/below", "", 0));
}

TEST_F(Files, AreReadIntoBuffersOfAnySize) {
    const std::string block(65536, 'x');
    EXPECT_TRUE(write("block", block, 1));
    EXPECT_EQ(read("block"), block + "\n");
    EXPECT_EQ(read("block", 4), "xxx");
    EXPECT_EQ(read("block", 0), "xxx") << "left alone";
    EXPECT_EQ(read("block", 1), "");
}

TEST_F(Files, NeverWaitForAnother) {
    EXPECT_TRUE(write("file", "", 0));
    ASSERT_EQ(mkfifo((made + "/pipe").c_str(), 0600), 0);
    EXPECT_FALSE(write("pipe", "", 0));
    EXPECT_FALSE(write("pipe", "", 2));
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_EQ(grantpt(terminal), 0);
    ASSERT_EQ(unlockpt(terminal), 0);
    EXPECT_EQ(read("none") + read("pipe") + read(ptsname(terminal)), "refusedrefusedrefused");
    close(terminal);
    EXPECT_EQ(read(".") + read("/dev/null") + read("/dev/zero", 99), "") << "what opens and cannot block";
    EXPECT_FALSE(copy("made", "copy")) << "the pipe";
}

TEST_F(Files, AreCopiedOverFilesAndFolders) {
    EXPECT_TRUE(write("a.txt", "new", 0));
    fs::create_directory(made + "/empty");
    write_bytes(folder / "copy/a.txt", "an older one");
    EXPECT_TRUE(copy("made", "copy"));
    EXPECT_EQ(read("../copy/a.txt"), "new\n");
    EXPECT_PRED1(is_folder, here + "/copy/empty");
    EXPECT_TRUE(copy("made/a.txt", "copy/b.txt"));
    EXPECT_EQ(read("../copy/b.txt"), "new\n");
    EXPECT_FALSE(copy("made/none", "copy/x"));
    EXPECT_FALSE(copy("made/empty", "made/a.txt")) << "a folder onto a file";
}

TEST_F(Files, AreNotCopiedIntoThemselves) {
    fs::create_directories(made + "/below");
    fs::create_directory_symlink(made, folder / "link");
    EXPECT_FALSE(copy("", "made/again"));
    EXPECT_FALSE(copy("made", "made/below/none/../again"));
    EXPECT_FALSE(copy("made", "link/again"));
    EXPECT_FALSE(copy("link", "made/again"));
    const fs::path before = fs::current_path();
    fs::current_path(made);
    EXPECT_FALSE(SetCopyFile(".", "again"));
    fs::current_path(before);
    EXPECT_FALSE(fs::exists(made + "/again"));
    EXPECT_TRUE(copy("made", "made again")) << "a name that begins with the folder's";
}

TEST_F(Files, AreFoundByExtension) {
    fs::create_directories(folder / "deep/x.wav");
    const std::string odd = "\xFF 台.wav"; // a name need not be UTF-8
    for (const char* file :
         {"b.WAV", "c.tar.wav", ".wav", "d.wave", "e.wav.", "wav", "deep/x.wav/g.wav", odd.c_str()})
        write_bytes(folder / file, "");
    fs::create_directory_symlink(folder.path, folder / "deep/cycle");
    fs::create_directory_symlink(folder / "deep", folder / "link.wav");
    std::vector<std::string> paths;
    EXPECT_TRUE(mk_api::path::GetFilePathList(here, "waV", paths));
    std::ranges::sort(paths);
    EXPECT_EQ(paths, (std::vector{here + "/b.WAV", here + "/c.tar.wav", here + "/deep/x.wav",
                                  here + "/deep/x.wav/g.wav", here + "/link.wav", here + "/" + odd}));
    EXPECT_TRUE(mk_api::path::GetFilePathList(here, "", paths));
    EXPECT_EQ(paths.at(6), here + "/e.wav.");
    EXPECT_FALSE(mk_api::path::GetFilePathList(here + "/b.WAV", "wav", paths));
}

TEST_F(Files, SurviveEveryFailedAllocation) {
    const std::string deep = here + "/a folder of some length/and one below it";
    fs::create_directories(deep);
    write_bytes(deep + "/a line.wav", "text");
    std::vector<std::string> paths;
    bool is_copied = false;
    const int failures = mk_test::fail_each_allocation([&] {
        try {
            mk_api::path::GetFilePathList(here, "wav", paths);
            is_copied = SetCopyFile(deep.c_str(), (here + "/a copy").c_str());
        } catch (const std::bad_alloc&) {
            is_copied = false;
        }
    });
    EXPECT_TRUE(is_copied) << "once all memory was there";
    EXPECT_GT(failures, 0);
}

} // namespace
