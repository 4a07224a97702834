// The dialog about a missing extension, and the opening of its web address.

#include "sws/dependency.hpp"
#include "tests/plugin/support/bound_plugin.hpp"
#include "tests/plugin/support/stand_in_command.hpp"

namespace {

using Dependency = mk_test::BoundPlugin;

TEST_F(Dependency, OpensTheExtensionsAddressOnYes) {
    const mk_test::StandInCommand browser("xdg-open");
    browser.runs("echo \"$1\" >> output\n");
    dependency_manager::assert_not_installed("MK_Something", "", third_plugin{1});
    EXPECT_TRUE(messages.empty()) << "another extension";
    dependency_manager::assert_not_installed("MK_Something", "", third_plugin::SWS);
    EXPECT_EQ(messages, std::vector<std::string>({"To use MK_Something, you need to install SWS Extension.\n"
                                                  "Please refer to the URL below for details.\n\n"
                                                  "https://www.sws-extension.org\n\n"
                                                  "Would you like to open the URL?"}));
    EXPECT_EQ(browser.output(), "");
    message_box_answer = yes;
    dependency_manager::assert_not_installed("MK_Something", "", third_plugin::SWS);
    EXPECT_EQ(browser.output(), "https://www.sws-extension.org\n");
}

} // namespace
