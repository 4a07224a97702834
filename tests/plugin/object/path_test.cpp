// Real files and folders taken apart, and the record's JSON form.

#include "object/path.hpp"
#include "tests/headless/support/scratch_folder.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <sys/stat.h>

namespace {

using mk_object::mk_Path;

class PathRecord : public ::testing::Test {
protected:
    std::string make_file(const std::string& name) {
        std::ofstream(folder.path / name) << "x";
        return (folder.path / name).string();
    }
    headless::test::ScratchFolder folder;
    std::string root = folder.path.string();
};

TEST_F(PathRecord, takes_a_file_apart) {
    const mk_Path path(make_file("a.b.wav"));
    EXPECT_EQ(path.ParentPath->value, root);
    EXPECT_EQ(path.ParentName->value, folder.path.filename());
    EXPECT_EQ(path.FilePath->value, root + "/a.b.wav");
    EXPECT_EQ(path.FileName->value, "a.b.wav");
    EXPECT_EQ(path.FileNameWithoutExtension->value, "a.b");
    EXPECT_EQ(path.Extension->value, "wav");
    EXPECT_EQ(path.Type->value, "File");
}

TEST_F(PathRecord, knows_folders_pipes_and_names_without_extension) {
    EXPECT_EQ(mk_Path(root).Type->value, "Folder");
    const mk_Path slashed(root + "/");
    EXPECT_EQ(slashed.FileName->value, "");
    EXPECT_EQ(slashed.ParentPath->value, root);
    EXPECT_TRUE(slashed.FileName->exists);
    EXPECT_EQ(mk_Path(make_file(".hidden")).Extension->value, "hidden");
    EXPECT_EQ(mk_Path(make_file("noext")).FileNameWithoutExtension->value, "noext");
    ASSERT_EQ(mkfifo((root + "/pipe").c_str(), 0600), 0);
    const mk_Path pipe(root + "/pipe");
    EXPECT_TRUE(pipe.Type->exists);
    EXPECT_EQ(pipe.Type->value, "");
}

TEST_F(PathRecord, stays_as_it_was_when_there_is_no_such_path) {
    mk_Path path(make_file("a.wav"));
    EXPECT_EQ(path.read_path(root + "/missing.wav"), 1);
    EXPECT_EQ(path.FileName->value, "a.wav");
    mk_Path missing(root + "/missing.wav");
    EXPECT_FALSE(missing.FileName->exists);
    EXPECT_TRUE(missing.to_json().is_null());
}

TEST_F(PathRecord, survives_its_json_form_and_ignores_what_is_not_typed_as_text) {
    mk_Path path(make_file("日本.wav"));
    json form = path.to_json();
    EXPECT_EQ(form["Extension"].dump(), R"({"string":"wav"})");
    EXPECT_EQ(mk_Path(form).FileName->value, "日本.wav");
    EXPECT_EQ(path.get_size(), 0u) << "the generic key walk does not see this record";

    json odd = {{"FileName", {{"a", "x"}, {"string", "y"}}}, {"Type", {{"string", 3}}}, {"Extension", "wav"}};
    const mk_Path nothing(odd);
    EXPECT_FALSE(nothing.FileName->exists);
    EXPECT_FALSE(nothing.Type->exists);
    EXPECT_FALSE(nothing.Extension->exists);
}

} // namespace
