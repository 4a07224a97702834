// The dialog about a missing extension, the opening of its web address, and message boxes, by commands that stand
// in for those that the path finds.

#include "sws/dependency.hpp"
#include "tests/plugin/support/bound_plugin.hpp"
#include "utility/mk_utility.hpp"

#include <cstdlib>

namespace {

class Dependency : public mk_test::BoundPlugin {
protected:
    Dependency() { setenv("PATH", (folder.path.string() + ":" + old_path).c_str(), 1); }
    ~Dependency() override { setenv("PATH", old_path.c_str(), 1); }
    void make_command(const std::string& name, const std::string& script) const {
        headless::test::write_bytes(folder / name, "#!/bin/sh\n" + script);
        std::filesystem::permissions(folder / name, std::filesystem::perms::owner_all);
    }
    const std::string old_path = std::getenv("PATH");
};

TEST_F(Dependency, OpensTheExtensionsAddressOnYes) {
    make_command("xdg-open", "echo \"$1\" >> '" + (folder / "output").string() + "'");
    dependency_manager::assert_not_installed("MK_Something", "", third_plugin{1});
    EXPECT_TRUE(messages.empty()) << "another extension";
    dependency_manager::assert_not_installed("MK_Something", "", third_plugin::SWS);
    EXPECT_EQ(messages, std::vector<std::string>({"To use MK_Something, you need to install SWS Extension.\n"
                                                  "Please refer to the URL below for details.\n\n"
                                                  "https://www.sws-extension.org\n\n"
                                                  "Would you like to open the URL?"}));
    EXPECT_EQ(headless::test::bytes_of(folder / "output"), "");
    message_box_answer = yes;
    dependency_manager::assert_not_installed("MK_Something", "", third_plugin::SWS);
    EXPECT_EQ(headless::test::bytes_of(folder / "output"), "https://www.sws-extension.org\n");
    dependency_manager::open_url("it's $(echo) one; echo two");
    EXPECT_EQ(headless::test::bytes_of(folder / "output"),
              "https://www.sws-extension.org\nit's $(echo) one; echo two\n");
}

TEST_F(Dependency, MessageBoxIsNoWhenTheServiceFails) {
    make_command("zenity", "exit 0");
    EXPECT_EQ(mk_utility::show_message_box_info("m"), 0);
    EXPECT_EQ(mk_utility::show_message_box_info_YesNo("m"), 6);
    make_command("zenity", "exit 1");
    EXPECT_EQ(mk_utility::show_message_box_info_YesNo("m"), 7);
    EXPECT_NE(mk_utility::show_message_box_error("m"), 0);
}

} // namespace
