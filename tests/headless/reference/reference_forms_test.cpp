// The forms of the reference, for definition texts that need care: keywords, quotes, projects, unknown types.

#include "headless/reference/forms.hpp"

#include <gmock/gmock.h>

namespace headless::reference {
namespace {

using testing::HasSubstr;
using testing::Not;

CatalogueEntry entry(const char* name, const char* definition) {
    return {name, script::parse_definition(definition)};
}

class ReferenceForms : public testing::Test {
protected:
    ReferenceForms() {
        catalogue.version = "1.2.3";
        catalogue.workstation = {
            entry("Find", "MediaTrack*\0ReaProject*,int,bool*\0proj,end,fromOut\0A \"track\" <of> it")};
        catalogue.registered = {
            entry("MK_Pass", "int\0const char*,object*\0pass,objOut\0[MK:API]Pass"),
            entry("MK_Name", "bool\0MediaTrack*,char*,int\0track,nameOut,nameOut_sz\0[MK:API]Name")};
        catalogue.lua = {catalogue.registered[0]};
        catalogue.records = {entry("Peak", "\0double,MediaTrackArray*\0Time,Tracks\0A level")};
    }

    Catalogue catalogue;
};

TEST_F(ReferenceForms, LuaDefinitionsAvoidKeywordsAndMarkNil) {
    const std::string text = luals_form(catalogue);
    EXPECT_THAT(text, HasSubstr("-- MERIDEK_FELSPAR 1.2.3\n"));
    EXPECT_THAT(text, HasSubstr("---@param proj? ReaProject|0\n---@param end_ integer\n"
                                "---@return MediaTrack|nil\n---@return boolean from\n"
                                "function reaper.Find(proj, end_) end\n"));
    EXPECT_THAT(text, HasSubstr("---@class MediaTrack : identifier\n"));
    EXPECT_THAT(text, HasSubstr("---@class Peak\n---@field Time? number\n---@field Tracks? MediaTrack[]\n"));
    EXPECT_THAT(text, HasSubstr("MK_FELSPAR = {\n    MK_Pass = reaper.MK_Pass,\n}\n"));
}

TEST_F(ReferenceForms, PythonSignaturesEscapeAndOmitUnknownTypes) {
    const std::string text = python_form(catalogue);
    EXPECT_THAT(text,
                HasSubstr("    def Find(self, proj: Project | None, end: int) -> tuple[Track | None, bool]:\n"
                          "        \"\"\"A \\\"track\\\" <of> it\"\"\"\n"));
    EXPECT_THAT(text, HasSubstr("    def MK_Name(self, track: Track) -> tuple[bool, str]:\n"));
    EXPECT_THAT(text, Not(HasSubstr("MK_Pass")));
}

TEST_F(ReferenceForms, PagesEscapeMarkupAndLinkEachEntry) {
    const std::string page = html_form(catalogue);
    EXPECT_THAT(page, HasSubstr("<a href=\"#5-Find\">Find</a></h3><pre>MediaTrack, boolean from = "
                                "reaper.Find(ReaProject proj, integer end)</pre>"
                                "<p>A &quot;track&quot; &lt;of&gt; it</p>"));
    EXPECT_THAT(page, HasSubstr("<h1>Reference of MERIDEK_FELSPAR 1.2.3</h1>"));
    EXPECT_THAT(page, HasSubstr("<li><a href=\"#1\">Functions of the library (2)</a></li>"));
}

} // namespace
} // namespace headless::reference
