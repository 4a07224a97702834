#pragma once
// A shell script that stands in for a command which is found by the path.

#include "tests/headless/support/scratch_folder.hpp"

#include <cstdlib>
#include <string>

namespace mk_test {

/// In force until its end; `output` is a file for the script to write to, beside it.
class StandInCommand {
public:
    explicit StandInCommand(std::string name) : name_(std::move(name)) {
        setenv("PATH", (folder_.path.string() + ":" + old_path_).c_str(), 1);
    }
    ~StandInCommand() { setenv("PATH", old_path_.c_str(), 1); }

    void runs(const std::string& script) const {
        headless::test::write_bytes(folder_ / name_,
                                    "#!/bin/sh\ncd '" + folder_.path.string() + "'\n" + script);
        std::filesystem::permissions(folder_ / name_, std::filesystem::perms::owner_all);
    }
    std::string output() const { return headless::test::bytes_of(folder_ / "output"); }

private:
    std::string name_;
    std::string old_path_ = std::getenv("PATH");
    headless::test::ScratchFolder folder_;
};

} // namespace mk_test
