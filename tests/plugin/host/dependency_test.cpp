// The dialog about a missing extension, and the opening of its web address.

#include "host/dependency.hpp"
#include "tests/plugin/support/bound_plugin.hpp"

#include <cstdlib>
#include <fstream>

namespace {

class Dependency : public mk_test::BoundPlugin {
protected:
    // The opening command is found by the path, where a stand-in notes what it is asked to open.
    Dependency() {
        const auto command = folder.path / "xdg-open";
        std::ofstream(command) << "#!/bin/sh\necho \"$1\" >> \"" << opened_file().string() << "\"\n";
        std::filesystem::permissions(command, std::filesystem::perms::owner_all);
        setenv("PATH", (folder.path.string() + ":" + old_path).c_str(), 1);
    }
    ~Dependency() override { setenv("PATH", old_path.c_str(), 1); }

    std::filesystem::path opened_file() const { return folder.path / "opened"; }
    std::string opened() const {
        std::ifstream file(opened_file());
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::string old_path = std::getenv("PATH");
};

TEST_F(Dependency, tells_what_is_missing_and_opens_its_address_on_a_yes) {
    message_box_answer = 6;
    dependency_manager::assert_not_installed("MK_Something", "", third_plugin::SWS);
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_EQ(messages[0],
              "To use MK_Something, you need to install SWS Extension.\nPlease refer to the URL below for "
              "details.\n\nhttps://www.sws-extension.org\n\nWould you like to open the URL?");
    EXPECT_EQ(opened(), "https://www.sws-extension.org\n");
}

TEST_F(Dependency, opens_nothing_on_a_no_and_shows_nothing_for_another_extension) {
    dependency_manager::assert_not_installed("MK_Something", "", third_plugin::SWS);
    dependency_manager::assert_not_installed("MK_Something", "", third_plugin{1});
    EXPECT_EQ(messages.size(), 1u);
    EXPECT_EQ(opened(), "");
}

TEST_F(Dependency, opens_an_address_by_itself) {
    dependency_manager::open_url("https://example.org");
    EXPECT_EQ(opened(), "https://example.org\n");
}

} // namespace
