#include "headless/host/text.hpp"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace headless {
namespace {

TEST(Text, is_cut_between_characters) {
    EXPECT_EQ(utf8_prefix("abcdef", 3), "abc");
    EXPECT_EQ(utf8_prefix("aあい", 4), "aあ");
    EXPECT_EQ(utf8_prefix("aあい", 6), "aあ");
    EXPECT_EQ(utf8_prefix("\xF0\x9F\x8E\x99x", 3), "");
    EXPECT_EQ(utf8_prefix("_\x80\x80\x80\x80\x80", 5), "_\x80\x80\x80\x80") << "no UTF-8 at all";
}

TEST(Text, never_overruns_a_buffer) {
    std::array<char, 4> buffer{'x', 'x', 'x', 'x'};
    copy_text("abcdef", buffer.data(), 0);
    copy_text("abcdef", nullptr, 4);
    EXPECT_EQ(buffer[0], 'x');
    copy_text("abcdef", buffer.data(), 3);
    EXPECT_EQ(std::string(buffer.data()), "ab");
    EXPECT_EQ(buffer[3], 'x');
}

TEST(Text, makes_file_names_that_every_folder_takes) {
    EXPECT_EQ(file_name_for("a/b\nc\x7F"
                            "d",
                            ".wav"),
              "a_b_c_d.wav");
    EXPECT_EQ(file_name_for("", ".wav"), "untitled.wav");
    EXPECT_EQ(file_name_for("..", ".wav"), "...wav");
    EXPECT_EQ(file_name_for("台詞", "-001.wav"), "台詞-001.wav");
    const std::string long_name = file_name_for(std::string(250, 'a') + "あ", ".wav");
    EXPECT_EQ(long_name, std::string(250, 'a') + ".wav");
}

TEST(Text, strips_only_the_endings_of_audio_files) {
    EXPECT_EQ(without_audio_extension("line.final.WAV"), "line.final");
    EXPECT_EQ(without_audio_extension("v1.2 take"), "v1.2 take");
    EXPECT_EQ(without_audio_extension(".wav"), ".wav");
}

} // namespace
} // namespace headless
