// The list of installed files: what is written is read, and what could lead astray is refused.

#include "headless/install/manifest.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <gtest/gtest.h>

namespace headless::install {
namespace {

using test::fails_telling;

struct InstalledList : testing::Test {
    InstalledList() { std::filesystem::create_directories(file.parent_path()); }

    test::ScratchFolder folder;
    std::filesystem::path file = folder / manifest_path;
};

TEST_F(InstalledList, KeepsFilesWithAllTheirSumsAndFolders) {
    Manifest list{.files = {{"Scripts/é b.lua", {std::string(64, 'a'), std::string(64, '0')}}, {"c", {}}},
                  .folders = {"Scripts", "Scripts/a b"}};
    list.files["c"].insert(std::string(64, 'f'));
    ASSERT_TRUE(write_manifest(list, folder.path));
    const auto read = read_manifest(folder.path);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->files, list.files);
    EXPECT_EQ(read->folders, list.folders);
    EXPECT_TRUE(read->has("c", std::string(64, 'f')));
    EXPECT_FALSE(read->has("c", std::string(64, 'a')));
}

TEST_F(InstalledList, IsEmptyWithoutAFile) {
    const auto read = read_manifest(folder.path);
    ASSERT_TRUE(read);
    EXPECT_FALSE(read->is_there);
    EXPECT_TRUE(read->files.empty());
}

TEST_F(InstalledList, IsRefusedIfALineIsDamagedOrLeadsOut) {
    const std::string head = "# MERIDEK_FELSPAR: installed files with their SHA-256 sums\n";
    const std::string sum(64, 'a');
    for (const std::string& line :
         {std::string("hello"), sum, sum + "  ", sum + " a", sum.substr(1) + "x  a", sum.substr(1) + "  a",
          sum + "  ../a", sum + "  a/../../b", sum + "  /etc/passwd", sum + "  ..\\a", sum + "  ./a",
          sum + "  a//b", sum + "  a/", sum + "  a|b", sum + "  a\tb", sum + "  C:a",
          std::string("# folder ../a"), std::string("# folder /"), std::string("# folder ")}) {
        test::write_bytes(file, head + sum + "  good\n" + line + "\n");
        EXPECT_THAT(read_manifest(folder.path), fails_telling("installed.txt: line 3 is damaged")) << line;
    }
}

TEST_F(InstalledList, IsRefusedIfItIsAnotherFile) {
    for (const char* text : {"", "\n", "# songs that I installed\n"}) {
        test::write_bytes(file, text);
        EXPECT_THAT(read_manifest(folder.path), fails_telling("installed.txt: line 1 is damaged")) << text;
    }
}

TEST_F(InstalledList, IsReadWithTheLineEndsOfWindows) {
    test::write_bytes(file, "# MERIDEK_FELSPAR: installed files with their SHA-256 sums\r\n# folder a\r\n" +
                                std::string(64, 'a') + "  a/b\r\n");
    const auto read = read_manifest(folder.path);
    ASSERT_TRUE(read) << read.error().message;
    EXPECT_EQ(read->folders, std::set<std::string>{"a"});
    EXPECT_TRUE(read->has("a/b", std::string(64, 'a')));
}

} // namespace
} // namespace headless::install
