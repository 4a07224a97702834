// Real files and folders taken apart, and the record's JSON form.

#include "object/path.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/stat.h>

namespace {

using mk_object::json;
using mk_object::mk_Path;

struct PathRecord : ::testing::Test {
    headless::test::ScratchFolder folder;
    std::string root = folder.path;
};

TEST_F(PathRecord, HasTheSamePartsInJson) {
    headless::test::write_bytes(folder / "日本.b.wav", "x");
    mk_Path path(folder / "日本.b.wav");
    const auto text = [](const std::string& value) { return json{{"string", value}}; };
    json form = {{"ParentPath", text(root)},
                 {"ParentName", text(folder.path.filename())},
                 {"FilePath", text(root + "/日本.b.wav")},
                 {"FileName", text("日本.b.wav")},
                 {"FileNameWithoutExtension", text("日本.b")},
                 {"Extension", text("wav")},
                 {"Type", text("File")}};
    EXPECT_EQ(path.read_path(root + "/missing.wav"), 1);
    EXPECT_EQ(path.to_json(), form) << "kept when a path is missing";
    EXPECT_EQ(mk_Path(form).to_json(), form);
    EXPECT_EQ(path.get_size(), 0u) << "the generic key walk does not see this record";
    json odd = {{"FileName", {{"a", "x"}, {"string", "y"}}}, {"Type", {{"string", 3}}}, {"Extension", "wav"}};
    EXPECT_TRUE(mk_Path(odd).to_json().is_null()) << "nothing is typed as text";
}

TEST_F(PathRecord, KnowsFoldersAndPipes) {
    const mk_Path slashed(root + "/");
    EXPECT_EQ(slashed.Type->value, "Folder");
    EXPECT_EQ(slashed.ParentPath->value, root);
    EXPECT_TRUE(slashed.FileName->exists);
    EXPECT_EQ(slashed.FileName->value, "");
    ASSERT_EQ(mkfifo((root + "/pipe").c_str(), 0600), 0);
    const mk_Path pipe(root + "/pipe");
    EXPECT_TRUE(pipe.Type->exists);
    EXPECT_EQ(pipe.Type->value, "");
}

} // namespace
