#include "headless/workstation/text.hpp"

#include <gtest/gtest.h>

#include <string>

namespace headless {
namespace {

TEST(Text, IsTruncatedBetweenCharacters) {
    EXPECT_EQ(workstation::utf8_prefix("aあい", 4), "aあ");
    EXPECT_EQ(workstation::utf8_prefix("\xF0\x9F\x8E\x99x", 3), "");
    EXPECT_EQ(workstation::utf8_prefix("_\x80\x80\x80\x80\x80", 5), "_\x80\x80\x80\x80") << "no UTF-8 at all";
}

TEST(Text, MakesValidFileNames) {
    EXPECT_EQ(workstation::file_name_for("a/b\nc\x7F.d", ".wav"), "a_b_c_.d.wav");
    EXPECT_EQ(workstation::file_name_for("", ".wav"), "untitled.wav");
    EXPECT_EQ(workstation::file_name_for("台詞", "-001.wav"), "台詞-001.wav");
    EXPECT_EQ(workstation::file_name_for(std::string(250, 'a') + "あ", ".wav"),
              std::string(250, 'a') + ".wav");
}

TEST(Text, StripsOnlyAudioExtensions) {
    EXPECT_EQ(workstation::without_audio_extension("line.final.WAV"), "line.final");
    EXPECT_EQ(workstation::without_audio_extension("v1.2 take"), "v1.2 take");
    EXPECT_EQ(workstation::without_audio_extension(".wav"), ".wav");
}

} // namespace
} // namespace headless
