#include "headless/base/atomic_file.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <csignal>
#include <sys/wait.h>

namespace headless::test {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;
namespace fs = std::filesystem;

/// A process that has begun to write a file in the folder, and stopped.
pid_t start_writer(const fs::path& folder) {
    const pid_t writer = fork();
    if (writer == 0) {
        auto file = AtomicFile::create(folder / "never");
        if (file && file->write("half of it"))
            raise(SIGSTOP);
        _exit(1);
    }
    int status = 0;
    waitpid(writer, &status, WUNTRACED);
    EXPECT_TRUE(WIFSTOPPED(status));
    return writer;
}

void kill_writer(pid_t writer) {
    kill(writer, SIGKILL);
    waitpid(writer, nullptr, 0);
}

TEST(AtomicFile, RemovesFilesOfKilledWritersOnly) {
    const ScratchFolder folder;
    const pid_t killed = start_writer(folder.path);
    const pid_t living = start_writer(folder.path);
    kill_writer(killed);
    write_bytes(folder / ".felspar-notes.tmp", "the user's own");
    ASSERT_EQ(names_in(folder.path).size(), 3U);
    EXPECT_TRUE(write_file(folder / "file", "whole"));
    EXPECT_THAT(names_in(folder.path),
                UnorderedElementsAre("file", ".felspar-notes.tmp",
                                     testing::StartsWith(".felspar-" + std::to_string(living))));
    kill_writer(living);
}

TEST(AtomicFile, AppearsWhenPublished) {
    const ScratchFolder folder;
    {
        auto file = AtomicFile::create(folder / "file");
        ASSERT_TRUE(file);
        EXPECT_TRUE(file->write("whole"));
        EXPECT_FALSE(fs::exists(folder / "file"));
        EXPECT_TRUE(file->publish(ExistingFile::keep));
    }
    {
        auto late = AtomicFile::create(folder / "file");
        ASSERT_TRUE(late);
        EXPECT_TRUE(late->write("other"));
        EXPECT_THAT(late->publish(ExistingFile::keep), fails_telling("file: File exists"));
    }
    EXPECT_EQ(bytes_of(folder / "file"), "whole");
    EXPECT_THAT(names_in(folder.path), ElementsAre("file"));
}

TEST(AtomicFile, HasThePermissionsOfAnOrdinaryFile) {
    const ScratchFolder folder;
    write_bytes(folder / "ordinary", "");
    EXPECT_TRUE(write_file(folder / "file", ""));
    EXPECT_EQ(fs::status(folder / "file").permissions(), fs::status(folder / "ordinary").permissions());
}

TEST(AtomicFile, CopiesToANewNameOnly) {
    const ScratchFolder folder;
    const std::string bytes(100000, 'a');
    write_bytes(folder / "file", bytes);
    EXPECT_TRUE(copy_atomically(folder / "file", folder / "copy"));
    EXPECT_EQ(bytes_of(folder / "copy"), bytes);
    write_bytes(folder / "taken", "kept");
    EXPECT_FALSE(copy_atomically(folder / "file", folder / "taken"));
    EXPECT_EQ(bytes_of(folder / "taken"), "kept");
    EXPECT_THAT(copy_atomically(folder / "missing", folder / "new"), fails_telling("missing: No such file"));
    EXPECT_THAT(names_in(folder.path), UnorderedElementsAre("file", "copy", "taken"));
}

TEST(AtomicFile, IsWrittenThroughLinks) {
    const ScratchFolder folder;
    fs::create_directory(folder / "far");
    write_bytes(folder / "far/file", "old");
    fs::create_symlink("far/file", folder / "near");
    fs::create_symlink("near", folder / "nearer");
    EXPECT_TRUE(write_file(folder / "nearer", "new"));
    EXPECT_EQ(bytes_of(folder / "far/file"), "new");
    EXPECT_TRUE(fs::is_symlink(folder / "near"));
    EXPECT_TRUE(fs::is_symlink(folder / "nearer"));
    EXPECT_THAT(names_in(folder / "far"), ElementsAre("file"));
    fs::create_symlink("nowhere", folder / "dangling");
    fs::create_symlink("circle", folder / "circle");
    EXPECT_THAT(write_file(folder / "dangling", ""), fails_telling("dangling: is a link that leads nowhere"));
    EXPECT_THAT(write_file(folder / "circle", ""), fails_telling("circle: is a link that leads in a circle"));
}

TEST(AtomicFile, ComparesItsBytes) {
    const ScratchFolder folder;
    const std::string bytes(100000, 'a');
    auto file = AtomicFile::create(folder / "file");
    ASSERT_TRUE(file);
    ASSERT_TRUE(file->write(bytes));
    write_bytes(folder / "same", bytes);
    write_bytes(folder / "longer", bytes + "a");
    write_bytes(folder / "other", bytes.substr(1) + "b");
    EXPECT_EQ(file->has_bytes_of(folder / "same"), true);
    for (const char* name : {"longer", "other"})
        EXPECT_EQ(file->has_bytes_of(folder / name), false) << name;
    EXPECT_THAT(file->has_bytes_of(folder / "missing"), fails_telling("missing: No such file"));
}

} // namespace
} // namespace headless::test
