// Installing, upgrading and removing: exactly our files come and go, the user's stay.

#include "headless/base/interruption.hpp"
#include "headless/install/installation.hpp"
#include "headless/install/manifest.hpp"
#include "headless/install/sha256.hpp"
#include "tests/headless/support/failures.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <csignal>
#include <gmock/gmock.h>
#include <map>
#include <sys/resource.h>

namespace headless::install {
namespace {

namespace fs = std::filesystem;

using report::FileAction;
using test::bytes_of;
using test::write_bytes;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

using Outcomes = std::map<std::string, FileAction>;

struct Installed : testing::Test {
    Installed() {
        fs::create_directories(package);
        fs::create_directories(resources / "UserPlugins");
        offer("UserPlugins/reaper_X.so", "library 1");
        offer("Scripts/MERIDEK_FELSPAR/a.lua", "script 1");
    }

    void offer(const std::string& path, const std::string& bytes) {
        const fs::path source = package / std::to_string(offered.size());
        write_bytes(offered.try_emplace(path, source).first->second, bytes);
    }

    static Outcomes actions(const Result<std::vector<report::InstalledFile>>& files) {
        EXPECT_TRUE(files) << files.error().message;
        Outcomes outcomes;
        for (const report::InstalledFile& file : files.value_or(std::vector<report::InstalledFile>()))
            outcomes[file.path] = file.action;
        return outcomes;
    }

    Outcomes installing(const Options& options = {}) const {
        return actions(install(offered, resources, options));
    }
    Outcomes uninstalling() const { return actions(uninstall(resources, {})); }

    /// All files and folders with the files' bytes.
    std::map<std::string, std::string> tree() const {
        std::map<std::string, std::string> found;
        for (const auto& entry : fs::recursive_directory_iterator(resources))
            found[entry.path().lexically_relative(resources).string()] =
                entry.is_regular_file() ? bytes_of(entry.path()) : "";
        return found;
    }

    test::ScratchFolder folder;
    fs::path package = folder / "package";
    fs::path resources = folder / "resources";
    fs::path script = resources / "Scripts/MERIDEK_FELSPAR/a.lua";
    Package offered;
};

TEST_F(Installed, IsRemovedWithoutATrace) {
    write_bytes(resources / "UserPlugins/reaper_sws.so", "the user's");
    const auto before = tree();
    EXPECT_THAT(installing(), ElementsAre(Pair("Scripts/MERIDEK_FELSPAR/a.lua", FileAction::installed),
                                          Pair("UserPlugins/reaper_X.so", FileAction::installed)));
    EXPECT_EQ(bytes_of(script), "script 1");
    EXPECT_THAT(installing(), ElementsAre(Pair("Scripts/MERIDEK_FELSPAR/a.lua", FileAction::unchanged),
                                          Pair("UserPlugins/reaper_X.so", FileAction::unchanged)));
    EXPECT_EQ(uninstalling().size(), 2U);
    EXPECT_EQ(tree(), before);
    EXPECT_THAT(uninstalling(), IsEmpty());
}

TEST_F(Installed, IsUpgradedInOneStepForEachFile) {
    offer("Scripts/MERIDEK_FELSPAR/old.lua", "of version 1 only");
    offer("Scripts/MERIDEK_FELSPAR/old too.lua", "of version 1 only");
    installing();
    fs::create_hard_link(resources / "UserPlugins/reaper_X.so", folder / "in use");
    write_bytes(resources / "Scripts/MERIDEK_FELSPAR/old too.lua", "the user's");
    offered.erase("Scripts/MERIDEK_FELSPAR/old.lua");
    offered.erase("Scripts/MERIDEK_FELSPAR/old too.lua");
    offer("UserPlugins/reaper_X.so", "library 2");
    EXPECT_THAT(installing(), ElementsAre(Pair("Scripts/MERIDEK_FELSPAR/a.lua", FileAction::unchanged),
                                          Pair("Scripts/MERIDEK_FELSPAR/old too.lua", FileAction::kept),
                                          Pair("Scripts/MERIDEK_FELSPAR/old.lua", FileAction::removed),
                                          Pair("UserPlugins/reaper_X.so", FileAction::replaced)));
    EXPECT_EQ(bytes_of(folder / "in use"), "library 1");
    EXPECT_EQ(bytes_of(resources / "UserPlugins/reaper_X.so"), "library 2");
    EXPECT_EQ(uninstalling().size(), 2U);
    EXPECT_EQ(bytes_of(resources / "Scripts/MERIDEK_FELSPAR/old too.lua"), "the user's");
}

TEST_F(Installed, KeepsAFileThatIsNotOurs) {
    write_bytes(resources / "UserPlugins/reaper_X.so", "the user's");
    fs::create_directories(script); // a folder where a file is to go
    EXPECT_THAT(installing(), ElementsAre(Pair("Scripts/MERIDEK_FELSPAR/a.lua", FileAction::kept),
                                          Pair("UserPlugins/reaper_X.so", FileAction::kept)));
    EXPECT_THAT(uninstalling(), IsEmpty());
    EXPECT_EQ(bytes_of(resources / "UserPlugins/reaper_X.so"), "the user's");
    EXPECT_TRUE(fs::is_directory(script));
}

TEST_F(Installed, DoesNotTakeOverTheSameFileOfTheUsers) {
    write_bytes(resources / "UserPlugins/reaper_X.so", "library 1");
    EXPECT_EQ(installing()["UserPlugins/reaper_X.so"], FileAction::unchanged);
    uninstalling();
    EXPECT_EQ(bytes_of(resources / "UserPlugins/reaper_X.so"), "library 1");
}

TEST_F(Installed, KeepsAFileThatTheUserHasChanged) {
    installing();
    write_bytes(script, "the user's");
    EXPECT_EQ(installing()["Scripts/MERIDEK_FELSPAR/a.lua"], FileAction::kept);
    offer("Scripts/MERIDEK_FELSPAR/a.lua", "script 2");
    EXPECT_EQ(installing()["Scripts/MERIDEK_FELSPAR/a.lua"], FileAction::kept);
    EXPECT_THAT(uninstalling(), ElementsAre(Pair("Scripts/MERIDEK_FELSPAR/a.lua", FileAction::kept),
                                            Pair("UserPlugins/reaper_X.so", FileAction::removed)));
    EXPECT_EQ(bytes_of(script), "the user's");
}

TEST_F(Installed, KeepsALinkThatTookTheFilesPlace) {
    installing();
    fs::rename(script, folder / "elsewhere.lua");
    fs::create_symlink(folder / "elsewhere.lua", script);
    EXPECT_EQ(uninstalling()["Scripts/MERIDEK_FELSPAR/a.lua"], FileAction::kept);
    EXPECT_TRUE(fs::is_symlink(script));
}

TEST_F(Installed, MovesTheUsersFilesAsideOnRequest) {
    installing();
    for (const char* change : {"first", "second"}) {
        write_bytes(script, change);
        const auto files = install(offered, resources, {.replaces = true});
        EXPECT_EQ(actions(files)["Scripts/MERIDEK_FELSPAR/a.lua"], FileAction::replaced);
        EXPECT_EQ(bytes_of(resources / files->front().saved_as), change);
        EXPECT_EQ(bytes_of(script), "script 1");
    }
    uninstalling();
    EXPECT_THAT(test::names_in(script.parent_path()),
                testing::UnorderedElementsAre("a.lua.saved", "a.lua.saved-2"));
}

TEST_F(Installed, TellsInADryRunWhatARealOneDoes) {
    write_bytes(resources / "UserPlugins/reaper_X.so", "the user's");
    const auto before = tree();
    const Outcomes told = installing({.is_dry_run = true});
    EXPECT_EQ(tree(), before);
    EXPECT_EQ(installing(), told);
    const auto after = tree();
    const Outcomes removal = actions(uninstall(resources, {.is_dry_run = true}));
    EXPECT_EQ(tree(), after);
    EXPECT_EQ(uninstalling(), removal);
}

TEST_F(Installed, LeavesAFolderToWhichTheUserAddedSomething) {
    installing();
    write_bytes(script.parent_path() / "mine.lua", "");
    uninstalling();
    EXPECT_THAT(test::names_in(script.parent_path()), ElementsAre("mine.lua"));
}

/// While this exists, files cannot grow beyond that size.
class SmallFiles {
public:
    explicit SmallFiles(rlim_t max_bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit small{max_bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;
    ~SmallFiles() {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    rlimit before_{};
    void (*handler_)(int);
};

TEST_F(Installed, ChangesNothingIfTheDiskIsFull) {
    const auto fail = [&](rlim_t max_bytes, const std::string& file) {
        const auto before = tree();
        const SmallFiles limit(max_bytes);
        EXPECT_THAT(install(offered, resources, {.replaces = true}),
                    test::fails_telling(file + ": File too large"));
        EXPECT_EQ(tree(), before);
    };
    fail(100, "installed.txt"); // the files are smaller
    write_bytes(resources / "UserPlugins/reaper_X.so", "the user's");
    fail(100, "installed.txt");
    offer("UserPlugins/reaper_X.so", std::string(100'000, '2'));
    fail(50'000, "reaper_X.so.saved");
    installing({.replaces = true});
    offer("Scripts/MERIDEK_FELSPAR/new/b.lua", "script 2");
    offer("UserPlugins/reaper_X.so", std::string(100'000, '3'));
    fail(50'000, "reaper_X.so");
}

TEST_F(Installed, DoesNotClaimAFileThatItFailedToReplace) {
    installing();
    const fs::path library = resources / "UserPlugins/reaper_X.so";
    write_bytes(library, "the user's");
    offer("UserPlugins/reaper_X.so", "library 2");
    {
        const SmallFiles limit(100);
        EXPECT_FALSE(install(offered, resources, {.replaces = true}));
    }
    write_bytes(library, "library 2"); // by another installer
    EXPECT_EQ(uninstalling()["UserPlugins/reaper_X.so"], FileAction::kept);
    EXPECT_EQ(bytes_of(library), "library 2");
}

TEST_F(Installed, CanBeRepeatedOrRemovedWhenItWasCutOff) {
    const auto cut_off = [&] {
        offer("UserPlugins/reaper_X.so", "library 1");
        installing();
        auto list = read_manifest(resources).value();
        offer("UserPlugins/reaper_X.so", "library 2");
        list.files["UserPlugins/reaper_X.so"].insert(sha256("library 2"));
        list.files["Scripts/MERIDEK_FELSPAR/a.lua"].insert(sha256("script 2"));
        ASSERT_TRUE(write_manifest(list, resources));
        write_bytes(script, "script 2");
        offer("Scripts/MERIDEK_FELSPAR/a.lua", "script 2");
    };
    cut_off();
    EXPECT_THAT(installing(), ElementsAre(Pair("Scripts/MERIDEK_FELSPAR/a.lua", FileAction::unchanged),
                                          Pair("UserPlugins/reaper_X.so", FileAction::replaced)));
    cut_off();
    EXPECT_EQ(uninstalling().size(), 2U);
    EXPECT_THAT(tree(), ElementsAre(Pair("UserPlugins", "")));
}

TEST_F(Installed, StopsBeforeTheFirstFileIfASignalCame) {
    const auto before = tree();
    interruption::detail::received = SIGINT;
    const auto files = install(offered, resources, {});
    interruption::detail::received = 0;
    ASSERT_FALSE(files);
    EXPECT_EQ(files.error().kind, FailureKind::interrupted);
    EXPECT_EQ(tree(), before);
}

TEST_F(Installed, RenamesALibraryThatWindowsMayHaveLoaded) {
    const std::string path = "UserPlugins/reaper_X.dll";
    offer(path, "library 1");
    installing();
    offer(path, "library 2");
    fs::create_directories(resources / (path + ".felspar-old/loaded")); // cannot be removed
    EXPECT_THAT(install(offered, resources, {}), test::fails_telling("(close the workstation first)"));
    EXPECT_THAT(uninstall(resources, {}), test::fails_telling("(close the workstation first)"));
    fs::remove_all(resources / (path + ".felspar-old"));
    EXPECT_EQ(installing()[path], FileAction::installed);
    offer(path, "library 3");
    EXPECT_EQ(installing()[path], FileAction::replaced);
    EXPECT_EQ(bytes_of(resources / path), "library 3");
    write_bytes(resources / (path + ".felspar-old"), "library 2"); // was in use until now
    uninstalling();
    EXPECT_THAT(tree(), ElementsAre(Pair("UserPlugins", "")));
}

TEST_F(Installed, FailsBeforeAnythingIsWrittenIfTheListIsDamaged) {
    installing();
    write_bytes(resources / manifest_path, "damaged\n");
    const auto before = tree();
    offer("UserPlugins/reaper_X.so", "library 2");
    EXPECT_THAT(install(offered, resources, {}), test::fails_telling("line 1 is damaged"));
    EXPECT_THAT(uninstall(resources, {}), test::fails_telling("line 1 is damaged"));
    EXPECT_EQ(tree(), before);
}

TEST_F(Installed, NamesWhatStandsInTheWay) {
    for (const char* name : {"Scripts", "UserPlugins"}) {
        fs::remove(resources / name);
        write_bytes(resources / name, "a file");
        const auto before = tree();
        for (const bool is_dry_run : {true, false})
            EXPECT_THAT(install(offered, resources, {.is_dry_run = is_dry_run}),
                        test::fails_telling(std::string(name) + ": is not a folder"));
        EXPECT_EQ(tree(), before);
        fs::remove(resources / name);
    }
    offered.emplace("UserPlugins/none.so", folder / "none");
    EXPECT_THAT(install(offered, resources, {}), test::fails_telling("none: is not a file"));
}

} // namespace
} // namespace headless::install
