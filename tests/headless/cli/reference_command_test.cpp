// `felspar api` in each of its forms.

#include "headless/base/child_process.hpp"
#include "tests/headless/cli/command_runner.hpp"

namespace headless::test {
namespace {

using testing::HasSubstr;

struct ReferenceCommand : FelsparCommand {
    std::string reference(const std::string& form) {
        const Outcome outcome = felspar({"api", "--format", form});
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        return outcome.output;
    }
};

TEST_F(ReferenceCommand, ShowsEachFunctionInTheTermsOfItsLanguage) {
    const std::string text = felspar({"api"}).output;
    for (const char* part :
         {"Functions of the library (105)", "Functions of the Lua module (18)", "Functions for Python (54)",
          "boolean, TrackDetail[] trackList = reaper.MK_GetTrackDepthList(ReaProject project)\n    List",
          "integer, any obj = reaper.MK_Json_Deserialize(string jsonStr)\n",
          ". Works once the Lua module is loaded\n",
          "bool py_GetTrackDepthList(ReaProject* project, unsigned long long* trackListOut)\n    List",
          "TrackDetail: Name (string), Track (MediaTrack), Volume (number)",
          "boolean, string buf = reaper.GetTrackName(MediaTrack track)\n    The name"})
        EXPECT_THAT(text, HasSubstr(part));
    EXPECT_THAT(text, HasSubstr("boolean, number startPos, number endPos = "
                                "reaper.MK_GetRegionMarkerPosition(ReaProject projID, integer regionID)"));
    EXPECT_THAT(reference("markdown"), HasSubstr("\n### MK_ReadFile\n\n    boolean, string text = "));
    EXPECT_THAT(reference("html"), HasSubstr("<h3><a href=\"#3-py_GetPathInfo\">"));
    EXPECT_EQ(felspar({"api", "--format", "pdf"}).status, 2);
}

TEST_F(ReferenceCommand, FindsTheLibraryWhereArchivesHaveIt) {
    const std::filesystem::path built = FELSPAR_PROGRAM;
    const std::filesystem::path program = folder / "bin/felspar";
    const std::filesystem::path library = folder / "reaper_MERIDEK_FELSPAR.so";
    std::filesystem::create_directory(program.parent_path());
    std::filesystem::copy_file(built, program);
    std::filesystem::copy_file(built.parent_path().parent_path() / "lib/libreaper_MERIDEK_FELSPAR_for_6.x.so",
                               library);
    const auto status_of_copy = [&] {
        const auto result = run_process({program.string(), "api"}, std::nullopt);
        return result ? result->status : -1;
    };
    EXPECT_EQ(status_of_copy(), 0);
    std::filesystem::remove(library);
    EXPECT_EQ(status_of_copy(), 1);
}

TEST_F(ReferenceCommand, GivesEditorsTheFunctionsThatScriptsFind) {
    write_bytes(folder / "stub.lua", reference("luals"));
    write_bytes(folder / "compare.lua", R"(
        local stub = {}
        local returned = assert(loadfile("stub.lua", "t", stub))()
        assert(returned == stub.reaper)
        local found = require "reaper_MERIDEK_FELSPAR"
        assert(found == reaper)
        for _, names in ipairs {{found, stub.reaper}, {MK_FELSPAR, stub.MK_FELSPAR}} do
            for name in pairs(names[1]) do assert(names[2][name], name .. " is missing") end
            for name in pairs(names[2]) do assert(names[1][name], name .. " is not there") end
        end
        for line in io.lines("stub.lua") do
            local is_help = line:find("^%-%-%-[^@]")
            assert(is_help or not line:find("_sz") and not line:find("Out%f[^%w_]"), line)
        end
        print("the same"))");
    EXPECT_EQ(felspar({"run", "compare.lua"}).output, "the same\n");
}

} // namespace
} // namespace headless::test
