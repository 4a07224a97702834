// Folders made, text files written and read, copies and walks, in a folder that the test fills.

#include "api/project/files.hpp"
#include "api/project/folders.hpp"
#include "tests/plugin/support/bound_plugin.hpp"
#include "tests/plugin/support/failing_memory.hpp"
#include "tests/plugin/support/unprivileged.hpp"

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace MK_FELSPAR;
using headless::test::write_bytes;

class Files : public mk_test::BoundPlugin {
protected:
    const std::string here = folder.path, made = here + "/made";
    char full[1024] = "", name[64] = "";
};

TEST_F(Files, MakeFoldersWithTheStampsOfTheLocalTime) {
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
        EXPECT_TRUE(full == here + "/" + name && name == std::string(before) && fs::is_directory(full))
            << full;
    }
    EXPECT_TRUE(SetResoucePathFolder("a", 0, full, 4, name, sizeof name) && full == here.substr(0, 3));
    EXPECT_TRUE(SetPathFolder("/nowhere", made.c_str(), 0, full, sizeof full) && full == made);
    EXPECT_TRUE(SetPathFolder(full, "", 0, full, sizeof full) && full == made + "/");
    write_bytes(folder / "file", "");
    EXPECT_FALSE(SetPathFolder(here.c_str(), "file/below", 0, full, sizeof full) || full != made + "/");
    EXPECT_TRUE(SetProjectInfoRecAddPath(nullptr, "day", full, sizeof full, name, 3) && full == here);
    EXPECT_EQ(workstation.project().record_path, here.substr(0, 2)) << "as cut";
    char kept[] = "kept";
    EXPECT_TRUE(SetProjectInfoRecAddPath(nullptr, "day", full, sizeof full, kept, 0));
    EXPECT_FALSE(SetProjectInfoRecAddPath(nullptr, "day", full, sizeof full, nullptr, 9));
    EXPECT_EQ(workstation.project().record_path, "kept") << "what the buffer held";
}

TEST_F(Files, AreWrittenOverBesideOrBehindWhatIsThereAndReadWithEveryLineEnded) {
    const auto write = [&](const char* file, const std::string& text, int mode) {
        return WriteFile(made.c_str(), file, text.c_str(), mode);
    };
    const std::string block(65536, 'x');
    EXPECT_TRUE(!write("x", "text", 3) && fs::is_empty(made)) << "only the folder is made";
    EXPECT_TRUE(write("a.txt", "long text", 0) && write("a.txt", "new", 0) && write("a.txt", "\r\n\n", 2) &&
                write("a.txt", "1", 1) && write("a.txt", "2", 1) && write("a(1).txt", "3", 1) &&
                write("notes", "", 2) && write("notes", "4", 1) && write("block", block, 1));
    ASSERT_EQ(mkfifo((made + "/pipe").c_str(), 0600), 0);
    EXPECT_FALSE(write("pipe", "", 0) || write("pipe", "", 2) || write("block/below", "", 0));
    std::string text(70000, '?');
    const auto read = [&](const char* file, int size = 70000) {
        return ReadFile(made.c_str(), file, text.data(), size) ? std::string(text.c_str()) : "refused";
    };
    EXPECT_EQ(read("a.txt") + read("a(1).txt") + read("a(2).txt") + read("a(1)(1).txt") + read("notes(1)."),
              "new\r\n\n1\n2\n3\n4\n");
    EXPECT_TRUE(read("notes").empty() && read("block") == block + "\n");
    EXPECT_TRUE(read("block", 4) == "xxx" && read("notes", 0) == "xxx" && read("notes", 1).empty());
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_TRUE(terminal >= 0 && grantpt(terminal) == 0 && unlockpt(terminal) == 0);
    EXPECT_EQ(read("none") + read("pipe") + read(ptsname(terminal)), "refusedrefusedrefused");
    close(terminal);
    EXPECT_EQ(read(".") + read("/dev/null") + read("/dev/zero", 99), "") << "what opens and cannot block";
    EXPECT_TRUE(SetCopyFile((made + "/block").c_str(), (made + "/notes").c_str()) && read("notes", 2) == "x");
    EXPECT_FALSE(SetCopyFile((made + "/none").c_str(), (made + "/x").c_str()));
    EXPECT_FALSE(SetCopyFile(here.c_str(), (made + "/again").c_str()) || fs::exists(made + "/again"));
    EXPECT_FALSE(SetCopyFile(made.c_str(), (here + "/x").c_str())) << "the pipe";
    fs::remove(made + "/pipe");
    fs::create_directory(made + "/empty");
    write_bytes(folder / "x/a.txt", "old");
    EXPECT_TRUE(SetCopyFile(made.c_str(), (here + "/x").c_str()) && fs::is_directory(here + "/x/empty"));
    EXPECT_EQ(read("../x/a.txt") + read("../x/notes(1)."), "new\r\n\n4\n");
    EXPECT_FALSE(SetCopyFile((made + "/empty").c_str(), (made + "/a.txt").c_str())) << "a folder onto a file";
}

TEST_F(Files, AreFoundByTheExtensionOfTheirNames) {
    fs::create_directories(folder / "deep/x.wav");
    for (const char* file : {"b.WAV", "c.tar.wav", ".wav", "d.wave", "e.wav.", "wav", "deep/x.wav/g.wav"})
        write_bytes(folder / file, "");
    fs::create_directory_symlink(folder.path, folder / "deep/cycle");
    fs::create_directory_symlink(folder / "deep", folder / "link.wav");
    std::vector<std::string> paths;
    EXPECT_TRUE(mk_api::path::GetFilePathList(here, "waV", paths));
    std::ranges::sort(paths);
    EXPECT_EQ(paths, (std::vector{here + "/b.WAV", here + "/c.tar.wav", here + "/deep/x.wav",
                                  here + "/deep/x.wav/g.wav", here + "/link.wav"}));
    EXPECT_TRUE(mk_api::path::GetFilePathList(here, "", paths) && paths.at(5) == here + "/e.wav.");
    EXPECT_FALSE(mk_api::path::GetFilePathList(here + "/b.WAV", "wav", paths));
    fs::permissions(folder / "deep", fs::perms::none);
    {
        const mk_test::Unprivileged while_reading;
        EXPECT_THROW(mk_api::path::GetFilePathList(here, "wav", paths), fs::filesystem_error);
    }
    fs::permissions(folder / "deep", fs::perms::owner_all);
}

TEST_F(Files, SurviveTheFailureOfEverySingleAllocation) {
    const std::string deep = here + "/a folder of some length/and one below it", file = deep + "/a line.wav";
    fs::create_directories(deep);
    write_bytes(file, "text");
    std::vector<std::string> paths;
    mk_object::mk_Path info;
    const std::function<bool()> calls[] = {
        [&] { return mk_api::path::GetFilePathList(here, "wav", paths); },
        [&] { return SetCopyFile(deep.c_str(), (here + "/a copy").c_str()); },
        [&] { return SetPathFolder(here.c_str(), "another folder", 3, full, sizeof full); },
        [&] { return WriteFile(deep.c_str(), "a line.wav", "text", 1); },
        [&] { return ReadFile(deep.c_str(), "a line.wav", full, sizeof full); },
        [&] { return mk_api::path::GetPathInfo(file, info) == 0; }};
    for (const auto& call : calls) {
        bool is_done = false;
        const int failures = mk_test::fail_each_allocation([&] {
            try {
                is_done = call();
            } catch (const std::bad_alloc&) {
                is_done = false;
            }
        });
        EXPECT_TRUE(is_done && failures > 0) << "once all memory was there";
    }
}

} // namespace
